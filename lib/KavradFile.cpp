#include "KavradFile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

#include "Const.h"
#include "DateTool.h"
#include "Image.h"
#include "String.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr long HEADER = 1996;
constexpr int HEADER_SIZE = 52;
constexpr int LOW_RESOLUTION = 10;
constexpr float NO_ECHO = -150.0F;
constexpr int KIND_SIZE = 16;  ///< levels of one kind of echo
constexpr int DEBUG_4 = 16;    ///< number of the message level of runs

}  // namespace

int KavradFile::open(const char* name) {
  close();
  reset();
  opened = file.open(name, "r") != 0;
  return opened ? 1 : 0;
}

int KavradFile::rewind() {
  reset();
  return file.rewind();
}

int KavradFile::close() {
  if (!opened) return 0;
  opened = false;
  return file.close();
}

/** Back to what is known ahead of the header. */
void KavradFile::reset() {
  label.clear();
  date.init();
  height = width = type = start = end = value = 0;
  domain.init();
}

int KavradFile::readHeader() {
  if (!opened) return 0;
  reset();
  std::array<unsigned char, HEADER_SIZE> head{};
  if (file.seek(HEADER) == 0 || file.read(head.data(), HEADER_SIZE) != HEADER_SIZE) return 0;
  type = head[14] == 'C' ? 1 : 0;
  char time[13] = {};
  std::memcpy(time, &head[16], 12);
  int hour = 0;
  int minute = 0;
  int second = 0;
  int day = 0;
  int month = 0;
  int year = 0;
  if (std::sscanf(time, "%2d%2d%2d%2d%2d%2d", &hour, &minute, &second, &day, &month, &year) == 6) {
    year += year < 50 ? 2000 : 1900;
    date.set(year, month, day, hour, minute, static_cast<float>(second));
  }
  start = head[42] << 8 | head[43];
  end = head[44] << 8 | head[45];
  label = "KAV Radar Master [dBZ]";
  const bool low = head[38] == LOW_RESOLUTION;
  DomainVal val;
  val.proj = DomainVal::LATLON;
  val.clat = 39.0F;
  val.clon = -96.0F;
  val.nx = width = low ? 2560 : 5120;
  val.ny = height = low ? 2880 : 5760;
  val.dx = low ? 0.0257812F : 0.0128906F;
  val.dy = low ? 0.0171874F : 0.0085937F;
  return domain.set(val);
}

int KavradFile::readPacket(KavradPacket& packet) {
  const int b = opened ? file.getByte() : -1;
  if (b < 0) return 0;
  switch (b) {
    case '!': return 0;
    case '"': return 1;  // the packet stays: deliberate
    case '#': packet = {-1, value}; return 1;
    case '$': {
      const int n = file.getByte();
      if (n < 0) return 0;
      packet = {n, value};
      return 1;
    }
    default: break;
  }
  if (b < ' ') {
    packet = {b, value};
    return 1;
  }
  value = b & 63;
  if (type == 0) {
    if (value < KIND_SIZE) {
      value++;
    } else if (value == KIND_SIZE) {
      value = 0;
    }
  }
  packet = {b >> 6, value};
  return 1;
}

/** The table of values. */
void KavradFile::setValues(Image& image) const {
  image.setValue(0, NO_ECHO);
  const auto set = [&image](int i, int v) { image.setValue(i, static_cast<float>(v)); };
  if (type == 1) {
    for (int i = 1; i <= 3; i++) set(i, 10 * i + 10);
    for (int i = 4; i <= 6; i++) set(i, 5 * (i - 3) + 40);
    return;
  }
  for (int i = 1; i <= 16; i++) set(i, 5 * (i - 1));
  for (int i = 17; i <= 31; i++) set(i, 5 * i - 80 + 100);
  set(32, 100);
  for (int i = 33; i <= 47; i++) set(i, 5 * i - 160 + 200);
  set(48, 200);
}

int KavradFile::read(Image& image) {
  if (!opened) return 0;
  image.init();
  readHeader();
  if (domain.isSet()) {
    image.set(domain, 8);
  } else {
    image.set(0, 0, 8);
  }
  if (image.allocData() == 0) return 0;
  String text;
  DateTool::createLabel(date, text);
  image.setInfo(label.c_str());
  image.setDate(date);
  image.setDatim(text.get());
  image.setColorType(Image::DATA);
  image.allocValues();
  setValues(image);

  const bool debug = Zqv::checkMessage(DEBUG_4);
  KavradPacket packet;
  int x = 0;
  for (int y = 0; y < height && readPacket(packet) != 0;) {
    const int run = packet.run < 0 ? width - x : packet.run;
    if (debug) Zqv::outDebug(4, "PACK %4d,%4d - %d %d\n", x, y, run, packet.val);
    const int n = std::min(run, width - x);
    unsigned char* row = image.findRow(y);
    if (row != nullptr) std::memset(row + x, packet.val, static_cast<size_t>(n));
    x += n;
    if (x >= width) {
      x = 0;
      y++;
    }
  }
  return 1;
}

}  // namespace ZQV
