#include "NidsMaker.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <bzlib.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <zlib.h>

#include "NidsFile.h"
#include "NidsPacket.h"

namespace ZQV {

namespace {

constexpr int divider = 0xFFFF;

std::string heading() {
  return "SDUS53 KOUN 051639\r\r\nN0RTLX\r\r\n";
}

/** Calls put(run, level) for the runs of equal levels, which are no longer than most. */
template <typename Put>
void forRuns(const std::vector<int>& levels, size_t most, Put put) {
  for (size_t i = 0; i < levels.size();) {
    size_t n = 1;
    while (n < most && i + n < levels.size() && levels[i + n] == levels[i]) {
      ++n;
    }
    put(n, levels[i]);
    i += n;
  }
}

/** Runs of up to 15 equal levels, a byte each, filled up to a halfword as radars do. */
std::string packRuns(const std::vector<int>& levels) {
  std::string out;
  forRuns(levels, 15, [&](size_t n, int level) {
    out.push_back(static_cast<char>(n << 4U | static_cast<size_t>(level & 15)));
  });
  if (out.size() % 2 != 0) {
    out.push_back('\0');  // a run of none
  }
  return out;
}

/** Pairs of run and level. */
std::string pairRuns(const std::vector<int>& levels) {
  std::string out;
  forRuns(levels, 255, [&](size_t n, int level) {
    out += {static_cast<char>(n), static_cast<char>(level)};
  });
  return out;
}

/** Rows behind a head, each with its length, packed. */
std::string packRows(std::string out, const NidsMaker::Rows& rows,
                     std::string (*pack)(const std::vector<int>&)) {
  for (const auto& row : rows) {
    const std::string runs = pack(row);
    out += NidsMaker::u2(static_cast<int>(runs.size())) + runs;
  }
  return out;
}

int longest(const std::vector<NidsMaker::Radial>& list) {
  size_t n = 0;
  for (const auto& radial : list) {
    n = std::max(n, radial.levels.size());
  }
  return static_cast<int>(n);
}

int tenths(double v) {
  return static_cast<int>(std::lround(v * 10));
}

}  // namespace

std::string NidsMaker::u2(int v) {
  return {static_cast<char>(v >> 8), static_cast<char>(v)};
}

std::string NidsMaker::u4(int64_t v) {
  return u2(static_cast<int>(v >> 16)) + u2(static_cast<int>(v & 0xFFFF));
}

std::string NidsMaker::radials(const std::vector<Radial>& list) {
  std::string out = u2(0xAF1F) + u2(0) + u2(longest(list)) + u2(256) + u2(280) + u2(999) +
                    u2(static_cast<int>(list.size()));
  for (const auto& radial : list) {
    const std::string runs = packRuns(radial.levels);
    out += u2(static_cast<int>(runs.size() / 2)) + u2(tenths(radial.ang0)) +
           u2(tenths(radial.ang1)) + runs;
  }
  return out;
}

std::string NidsMaker::digital(const std::vector<Radial>& list, int nbin) {
  std::string out = u2(16) + u2(0) + u2(nbin < 0 ? longest(list) : nbin) + u2(0) + u2(0) + u2(1) +
                    u2(static_cast<int>(list.size()));
  for (const auto& radial : list) {
    out += u2(static_cast<int>(radial.levels.size())) + u2(tenths(radial.ang0)) +
           u2(tenths(radial.ang1));
    for (const int level : radial.levels) {
      out.push_back(static_cast<char>(level));
    }
  }
  return out;
}

std::string NidsMaker::raster(const Rows& rows, int packet_code) {
  return packRows(u2(packet_code) + u2(0x8000) + u2(0x00C0) + u2(3) + u2(5) + u2(1) + u2(0) +
                      u2(1) + u2(0) + u2(static_cast<int>(rows.size())) + u2(2),
                  rows, packRuns);
}

std::string NidsMaker::raster8(const Rows& rows) {
  return packRows(u2(0xBA0F) + u2(0x8000) + u2(0x00C0) + u2(0) + u2(0) + u2(1) + u2(0) + u2(1) +
                      u2(0) + u2(static_cast<int>(rows.size())) + u2(1),
                  rows, pairRuns);
}

std::string NidsMaker::array(const Rows& rows) {
  const size_t cols = rows.empty() ? 0 : rows.front().size();
  return packRows(
      u2(17) + u2(0) + u2(0) + u2(static_cast<int>(cols)) + u2(static_cast<int>(rows.size())), rows,
      pairRuns);
}

std::string NidsMaker::vectors(const std::vector<Vector>& list) {
  std::string out = u2(7) + u2(static_cast<int>(list.size() * 8));
  for (const auto& v : list) {
    out += u2(v.x1) + u2(v.y1) + u2(v.x2) + u2(v.y2);
  }
  return out;
}

std::string NidsMaker::vectors(int value, const std::vector<Vector>& list) {
  const std::string plain = vectors(list);
  return u2(10) + u2(static_cast<int>(list.size() * 8) + 2) + u2(value) + plain.substr(4);
}

std::string NidsMaker::winds(const std::vector<Wind>& list) {
  std::string out = u2(4) + u2(static_cast<int>(list.size() * 10));
  for (const auto& w : list) {
    out += u2(w.value) + u2(w.x) + u2(w.y) + u2(w.dir) + u2(w.spd);
  }
  return out;
}

std::string NidsMaker::text(int value, int x, int y, const std::string& chars, int packet_code) {
  return u2(packet_code) + u2(static_cast<int>(chars.size()) + 6) + u2(value) + u2(x) + u2(y) +
         chars;
}

std::string NidsMaker::other(int packet_code, const std::string& payload) {
  return u2(packet_code) + u2(static_cast<int>(payload.size())) + payload;
}

std::string NidsMaker::zlib(const std::string& data, int level) {
  uLongf size = compressBound(static_cast<uLong>(data.size()));
  std::string out(size, '\0');
  if (compress2(reinterpret_cast<Bytef*>(out.data()), &size,
                reinterpret_cast<const Bytef*>(data.data()), static_cast<uLong>(data.size()),
                level) != Z_OK) {
    std::abort();
  }
  out.resize(size);
  return out;
}

std::string NidsMaker::bzip2(const std::string& data) {
  auto size = static_cast<unsigned>(data.size() + data.size() / 100 + 600);
  std::string out(size, '\0');
  std::string source = data;  // the interface has no const
  if (BZ2_bzBuffToBuffCompress(out.data(), &size, source.data(),
                               static_cast<unsigned>(source.size()), 9, 0, 0) != BZ_OK) {
    std::abort();
  }
  out.resize(size);
  return out;
}

std::string NidsMaker::message() const {
  std::string symb;
  if (!layers.empty()) {
    std::string body;
    for (const auto& layer : layers) {
      body += u2(divider) + u4(static_cast<int64_t>(layer.size())) + layer;
    }
    symb = u2(symb_divider) + u2(symb_id) + u4(static_cast<int64_t>(body.size()) + 10) +
           u2(static_cast<int>(layers.size())) + body;
  }
  std::string graph;
  if (!pages.empty()) {
    std::string body;
    int number = 0;
    for (const auto& page : pages) {
      body += u2(++number) + u2(static_cast<int>(page.size())) + page;
    }
    graph = u2(divider) + u2(2) + u4(static_cast<int64_t>(body.size()) + 10) +
            u2(static_cast<int>(pages.size())) + body;
  }
  constexpr int head = 120;  // both blocks
  const auto symb_size = static_cast<int64_t>(symb.size());
  const auto graph_size = static_cast<int64_t>(graph.size());
  std::string out = u2(code) + u2(mess_days) + u4(mess_secs) + u4(head + symb_size + graph_size) +
                    u2(src) + u2(0) + u2(2 + (symb.empty() ? 0 : 1) + (graph.empty() ? 0 : 1));
  out += u2(desc_divider) + u4(std::lround(lat * 1000)) + u4(std::lround(lon * 1000)) +
         u2(height_ft) + u2(code) + u2(mode) + u2(vcp) + u2(seq) + u2(vol_scan) + u2(vol_days) +
         u4(vol_secs) + u2(prod_days) + u4(prod_secs) + u2(param[0]) + u2(param[1]) + u2(scan_num) +
         u2(param[2]);
  for (const int word : level_words) {
    out += u2(word);
  }
  for (size_t i = 3; i < param.size(); ++i) {
    out += u2(param[i]);
  }
  out += u2(0) + u4(symb.empty() ? 0 : head / 2) + u4(graph.empty() ? 0 : (head + symb_size) / 2) +
         u4(0);
  return out + symb + graph + tail;
}

std::string NidsMaker::build() const {
  std::string out;
  switch (envelope) {
    case BARE: break;
    case START_LINE: out = "\x01\r\r\n774 \r\r\n" + heading(); break;
    case STARS: out = "** some feed **\n51234\n"; break;
    case HEADING: out = heading(); break;
    case CONTROL: out = std::string("\x40\x0C") + std::string(22, '\x11') + heading(); break;
  }
  const std::string body = message();
  switch (packing) {
    case PLAIN: out += body; break;
    case ZLIB: {
      const std::string all = std::string(24, '\x22') + heading() + body;
      const size_t step = member_size == 0 ? all.size() : member_size;
      for (size_t at = 0; at < all.size(); at += step) {
        out += zlib(all.substr(at, step), zlib_level);
      }
      break;
    }
    case BZIP2: out += bzip2(body); break;
    case BZIP2_BEHIND: out += body.substr(0, 120) + bzip2(body.substr(120)); break;
  }
  return trailer ? out + "\r\r\n\003" : out;
}

TempFile::TempFile(const std::string& data) : path(::testing::TempDir() + "zqvXXXXXX") {
  const int fd = mkstemp(path.data());
  if (fd < 0) {
    std::abort();
  }
  ::close(fd);
  write(data);
}

TempFile::~TempFile() {
  std::remove(path.c_str());
}

void TempFile::write(const std::string& data) const {
  std::ofstream(path, std::ios::binary | std::ios::trunc)
      .write(data.data(), static_cast<std::streamsize>(data.size()));
}

NidsWalk::NidsWalk(NidsFile& nids, bool lines) {
  const auto say = [this, lines](const std::string& name, auto... numbers) {
    if (!lines) {
      return;
    }
    text += name;
    [[maybe_unused]] const auto add = [this](double v) {
      char number[32];
      std::snprintf(number, sizeof number, " %g", v);
      text += number;
    };
    (add(static_cast<double>(numbers)), ...);
    text += '\n';
  };
  const auto drain = [&] {
    NidsRun run;
    while (nids.readRun(run) > 0) {
      say("run", run.run, run.ival, run.val);
      zero_runs += run.run == 0 ? 1 : 0;
      cells.insert(cells.end(), static_cast<size_t>(run.run), static_cast<unsigned char>(run.ival));
    }
  };
  const auto packet = [&](int page) {
    if (nids.isPacketRadial()) {
      NidsRadial radial;
      while (nids.readRadial(radial) > 0) {
        say("radial", radial.ang0, radial.ang1);
        rays.push_back({radial.ang0, radial.ang1});
        const size_t before = cells.size();
        drain();
        rows.push_back(static_cast<int>(cells.size() - before));
      }
    } else if (nids.isPacketRastor() || nids.isPacketDpa()) {
      while (nids.readRastor() > 0) {
        say("row");
        const size_t before = cells.size();
        drain();
        rows.push_back(static_cast<int>(cells.size() - before));
      }
    } else if (nids.isPacketVector()) {
      NidsVector v;
      while (nids.readVector(v) > 0) {
        say("vector", v.val, v.x1, v.y1, v.x2, v.y2);
      }
    } else if (nids.isPacketWindbarb()) {
      NidsWind w;
      while (nids.readWind(w) > 0) {
        say("wind", w.val, w.x, w.y, w.dir, w.spd);
      }
    } else if (nids.isPacketText()) {
      NidsText t;
      if (nids.readText(t) > 0) {
        say(std::string("text \"") + t.data.data() + "\"", t.val, t.x, t.y);
        texts.push_back({page, t.x, t.y, t.data.data()});
      }
    }
  };

  int next = nids.getPacketCode();
  while (next > 0 && next != NidsFile::DIVIDER) {
    packets.push_back(next);
    packet(0);
    next = nids.readPacket();
  }
  if (nids.graphic() != 0) {
    while (nids.graphicLayer() > 0) {
      say("page", ++pages);
      while (nids.readPacket() > 0) {
        packet(pages);
      }
    }
  }
}

}  // namespace ZQV
