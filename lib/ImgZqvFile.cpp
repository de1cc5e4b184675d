#include "ImgZqvFile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <vector>

#include "Const.h"
#include "DateTool.h"
#include "Domain.h"
#include "DomainTool.h"
#include "FileTool.h"
#include "Image.h"
#include "StrLib.h"
#include "String.h"
#include "Swap.h"
#include "Zlib.h"

namespace ZQV {

namespace {

constexpr char MAGIC[] = "ZQVIMG";
constexpr int MAGIC_SIZE = 6;
constexpr int MAX_LINE = 80;
constexpr int MAX_DOMAIN_LINE = 120;
constexpr int NUM_VALUES = 256;
constexpr int PIXEL_BITS = 8;
/** Pixels that are compressed as one stream, and room for what comes of them. */
constexpr size_t BLOCK = 10000;
constexpr size_t PACKED_BLOCK = 12000;

/** A line of the header can't have another in it. */
std::string oneLine(const char* text) {
  std::string line = text;
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return line;
}

bool isWord(const std::string& word, const char* start) {
  return StrLib::iequal(word.c_str(), start, StrLib::length(start));
}

/** Projection and parameters out of the first word of the old form of a domain. */
int readWord(const std::string& word, DomainVal& val) {
  const size_t colon = word.find(':');
  const char* after = colon == std::string::npos ? "" : word.c_str() + colon + 1;
  if (isWord(word, "LL")) {
    val.proj = DomainVal::LATLON;
  } else if (isWord(word, "ME")) {
    val.proj = DomainVal::MERC;
  } else if (isWord(word, "PS")) {
    val.proj = DomainVal::PSTEREO;
    std::sscanf(after, "%f", &val.plon);
  } else if (isWord(word, "SAT")) {
    // What is written ahead is the latitude: files of this projection come back changed,
    // deliberate.
    val.proj = DomainVal::SAT;
    std::sscanf(after, "%f", &val.plon);
  } else if (isWord(word, "LC")) {
    val.proj = DomainVal::LAMB;
    std::array<float, 5> v{};
    const int n = std::sscanf(after, "%f:%f:%f:%f:%f", &v[0], &v[1], &v[2], &v[3], &v[4]);
    if (n == 5) {
      val.plat = v[0];
      val.plon = v[1];
      std::copy(v.begin() + 2, v.end(), val.param.begin());
    } else if (n > 0) {
      val.plon = v[0];
      val.param[0] = 30.0F;
      val.param[1] = 60.0F;
    }
  } else {
    return 0;
  }
  return 1;
}

/** A domain with the size of the image, where its own is missing or another. */
Domain sizedDomain(const Image& image) {
  DomainVal val = image.getDomainVal();
  val.nx = image.getWidth();
  val.ny = image.getHeight();
  return Domain(val);
}

/** The first word of the old form. @return 0 for a projection that it doesn't have */
int formatWord(const Domain& domain, String& out) {
  const auto number = [](float v) { return static_cast<double>(v); };
  const float plon = domain.getPLon();
  const float first = domain.getParam(0);
  switch (domain.getProj()) {
    case DomainVal::LATLON: return out.copy("LL ");
    case DomainVal::MERC: return out.copy("ME ");
    case DomainVal::PSTEREO:
      if (plon == Const::FMISS || plon == domain.getCLon()) return out.copy("PS ");
      return out.printf("PS:%f ", number(plon));
    case DomainVal::LAMB:
      if (first == Const::FMISS && plon == Const::FMISS) return out.copy("LC ");
      if (first == Const::FMISS) return out.printf("LC:%f ", number(plon));
      return out.printf("LC:%f:%f:%f:%f:%f ", number(domain.getPLat()), number(plon), number(first),
                        number(domain.getParam(1)), number(domain.getParam(2)));
    case DomainVal::SAT:
      out.printf("SAT:%f:%f", number(domain.getPLat()), number(plon));
      if (first != Const::FMISS) out.aprintf(":%f", number(first));
      return out.aprintf(" ");
    default: return 0;
  }
}

}  // namespace

int ImgZqvFile::open(const char* name, int how, int form) {
  close();
  access = how;
  path = name != nullptr ? name : "";
  if (how == 1) {
    type = form;
    opened = file.open(name, "w") != 0;
    return opened ? 1 : 0;
  }
  if (how != 0) return 0;
  // What is read of a standard stream can't be read again: readHeader() sees to its first line.
  if (!FileTool::isStdio(name)) {
    char start[10] = {};
    const bool is_ours = file.open(name, "r") != 0 && file.read(start, sizeof(start)) > 0 &&
                         std::memcmp(start, MAGIC, MAGIC_SIZE) == 0;
    file.close();
    if (!is_ours) return 0;
  }
  type = 1;
  opened = file.open(name, "r") != 0;
  return opened ? 1 : 0;
}

int ImgZqvFile::close() {
  if (!opened) return 0;
  opened = false;
  return file.close();
}

// Reading.

int ImgZqvFile::read(const char* name, Image& image) {
  return open(name, 0) != 0 ? read(image) : 0;
}

int ImgZqvFile::read(Image& image) {
  const int result = readHeader(image);
  return result > 0 ? readData(image) : result;
}

/** A line without the white space at its end. What doesn't fit is skipped. @return its length */
int ImgZqvFile::readLine(char* buffer, int size) {
  const int n = file.getLine(buffer, size);
  if (n > 0 && buffer[n - 1] != '\n') file.skipLine();
  StrLib::trimWS(buffer);
  return StrLib::length(buffer);
}

int ImgZqvFile::readHeader(Image& image) {
  if (!opened || access != 0) return 0;
  image.init();
  dtype = 0;
  char line[MAX_LINE + 1];
  readLine(line, sizeof(line));
  if (!StrLib::equal(line, MAGIC, MAGIC_SIZE)) return -1;
  int found = 3;
  for (const char* flag = line + MAGIC_SIZE; *flag != '\0'; flag++) {
    switch (*flag) {
      case '4': found = 4; break;
      case '*': dtype |= OTHER_FILE; break;
      case 'Z': dtype |= COMPRESSED; break;
      case 'V': dtype |= VALUES; break;
      case 'C': dtype |= CUTOFF; break;
      default: break;
    }
  }
  image.setVersion(found);
  readLine(line, sizeof(line));
  DateTool::decode(line, date);
  image.setDatim(line);
  image.setDate(date);
  readLine(line, sizeof(line));
  image.setInfo(line);

  Domain domain;
  int width = 0;
  int height = 0;
  readDomain(domain, width, height);
  image.set(std::max(width, 0), std::max(height, 0), PIXEL_BITS);
  if (domain.isSet()) image.bindDomain(domain);
  image.setSource(1);

  const Swap swap(Swap::DataStand);
  if ((dtype & VALUES) != 0) {
    image.setColorType(Image::DATA);
    image.allocValues();
    for (int i = 0; i < NUM_VALUES; i++) {
      float v = 0.0F;
      if (swap.readFloat(file, v) != 1) break;
      image.setValue(i, v);
    }
  }
  if ((dtype & CUTOFF) != 0) {
    short base = 0;
    short num = 0;
    if (swap.readInt2(file, base) == 1 && swap.readInt2(file, num) == 1) {
      image.setCutoff(std::to_string(base).c_str());
      short v = 0;
      for (int i = 0; i < num && swap.readInt2(file, v) == 1; i++) image.setCutoff(i, v);
    }
  }
  return 1;
}

/** The line of the domain, and the next one for "NONE". @return 1; 0 if there is no domain in it */
int ImgZqvFile::readDomain(Domain& domain, int& width, int& height) {
  char text[MAX_DOMAIN_LINE + 1];
  readLine(text, sizeof(text));
  if (StrLib::iequal(text, "NONE") || StrLib::iequal(text, "NONE ", 5)) {
    readLine(text, sizeof(text));
    std::sscanf(text, "%9d %9d", &width, &height);
    return 0;
  }
  const char* blank = std::strchr(text, ' ');
  DomainVal val;
  if (blank == nullptr) {
    if (DomainTool::decodeStored(val, text) == 0 || val.proj == Const::MISS) return 0;
  } else if (readWord(std::string(text, static_cast<size_t>(blank - text)), val) != 0) {
    std::sscanf(blank, "%f %f %f %f %9d %9d", &val.clat, &val.clon, &val.dx, &val.dy, &val.nx,
                &val.ny);
  } else {
    std::sscanf(text, "%9d %9d", &width, &height);
    return 0;
  }
  domain.set(val);
  width = val.nx;
  height = val.ny;
  return 1;
}

int ImgZqvFile::readData(Image& image) {
  if (!opened || access != 0) return 0;
  int result = image.allocData();
  if (result != 0 && (dtype & OTHER_FILE) != 0) {
    result = readOtherFile(image);
  } else if (result != 0 && (dtype & COMPRESSED) != 0) {
    result = readCompressed(image);
  } else if (result != 0) {
    file.read(image.getData(), static_cast<size_t>(image.getDataSize()));
  }
  close();
  return result;
}

/** The pixels out of the file that the header names. */
int ImgZqvFile::readOtherFile(Image& image) {
  char name[MAX_LINE + 1] = {};
  if (file.scanf("%80s", name) != 1) return -1;
  std::string whole = name;
  const size_t slash = path.rfind('/');
  if (slash != std::string::npos && *name != '/' && *name != '~') {
    whole.insert(0, path, 0, slash + 1);
  }
  File pixels;
  if (pixels.openPlain(whole.c_str()) == 0) return -1;
  pixels.read(image.getData(), static_cast<size_t>(image.getDataSize()));
  return 1;
}

/** Pixels in a run of streams, each right behind the one before. */
int ImgZqvFile::readCompressed(Image& image) {
  std::array<unsigned char, BLOCK> in{};
  Zlib zlib(Zlib::DECOMPRESS);
  zlib.init();
  unsigned char* out = image.getData();
  auto room = static_cast<int>(image.getDataSize());
  int avail = 0;
  const unsigned char* next = in.data();
  while (room > 0) {
    if (avail == 0) {
      avail = file.read(in.data(), in.size());
      if (avail < 1) break;
      next = in.data();
    }
    zlib.set(next, avail, out, room);
    zlib.decomp();
    if (zlib.isError()) {
      zlib.print();
      return -1;
    }
    const int used = avail - zlib.getAvailIn();
    const int made = room - zlib.getAvailOut();
    if (used == 0 && made == 0) break;
    next += used;
    avail -= used;
    out += made;
    room -= made;
  }
  return 1;
}

// Writing.

int ImgZqvFile::write(const char* name, int form, const Image& image) {
  if (open(name, 1, form) == 0) return 0;
  const int result = write(image);
  close();
  return result;
}

int ImgZqvFile::write(const Image& image) {
  if (!opened || access != 1) return 0;
  std::string head = MAGIC;
  if (ver == 4) head += '4';
  if (type == 2) head += 'Z';
  if (ver == 4 && image.hasValues()) head += 'V';
  if (ver == 4 && image.hasCutoff()) head += 'C';
  head += "\n" + oneLine(image.getDatim()) + "\n" + oneLine(image.getInfo()) + "\n";
  file.puts(head.c_str());
  writeDomain(image);
  const Swap swap(Swap::DataStand);
  if (ver == 4 && image.hasValues()) {
    for (int i = 0; i < NUM_VALUES; i++) swap.writeFloat(file, image.getValue(i));
  }
  if (ver == 4 && image.hasCutoff()) {
    swap.writeInt2(file, static_cast<short>(image.getCutBase()));
    swap.writeInt2(file, static_cast<short>(image.getNumCut()));
    // setCutoff(i, v) takes a boundary up as number i + 1.
    for (int i = 0; i < image.getNumCut(); i++) {
      swap.writeInt2(file, static_cast<short>(image.getCutoff(i + 1)));
    }
  }
  int result = 1;
  if (image.getDepth() == PIXEL_BITS && !image.hasColors()) {
    // Pixels that are nowhere read back as 0 without being there.
    result = (!image.validData() || writePixels(image) != 0) && file.flush() != 0 ? 1 : 0;
    close();
  }
  return result;
}

int ImgZqvFile::writeDomain(const Image& image) {
  const Domain domain = sizedDomain(image);
  String text(MAX_DOMAIN_LINE);
  if (domain.isSet() && ver == 4) {
    domain.toString(text);
    return file.printf("%s\n", text.get());
  }
  if (!domain.isSet() || formatWord(domain, text) == 0) {
    return file.printf("%d %d\n", image.getWidth(), image.getHeight());
  }
  return file.printf("%s%f %f %f %f %d %d\n", text.get(), static_cast<double>(domain.getCLat()),
                     static_cast<double>(domain.getCLon()), static_cast<double>(domain.getDx()),
                     static_cast<double>(domain.getDy()), domain.getNx(), domain.getNy());
}

int ImgZqvFile::writePixels(const Image& image) {
  std::vector<unsigned char> buffer;
  std::vector<unsigned char> block;
  block.reserve(BLOCK);
  const auto width = static_cast<size_t>(std::max(image.getWidth(), 0));
  for (int y = 0; y < image.getHeight(); y++) {
    const unsigned char* row = image.getBytes(y, buffer);
    if (type != 2) {
      if (file.write(row, width) != static_cast<int>(width)) return 0;
      continue;
    }
    for (size_t x = 0; x < width;) {
      const size_t part = std::min(width - x, BLOCK - block.size());
      block.insert(block.end(), row + x, row + x + part);
      x += part;
      if (block.size() < BLOCK) continue;
      if (writeCompressed(block.data(), block.size()) == 0) return 0;
      block.clear();
    }
  }
  return block.empty() ? 1 : writeCompressed(block.data(), block.size());
}

/** Writes pixels as one stream. */
int ImgZqvFile::writeCompressed(const unsigned char* pixels, size_t size) {
  std::array<unsigned char, PACKED_BLOCK> out;
  Zlib zlib(Zlib::COMPRESS);
  zlib.init();
  zlib.set(pixels, static_cast<int>(size), out.data(), static_cast<int>(out.size()));
  if (zlib.comp(Z_FINISH) != Z_STREAM_END) return 0;
  const int n = static_cast<int>(out.size()) - zlib.getAvailOut();
  return file.write(out.data(), static_cast<size_t>(n)) == n ? 1 : 0;
}

}  // namespace ZQV
