#include "NowradFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "Const.h"
#include "DateTool.h"
#include "Image.h"
#include "String.h"

namespace ZQV {

namespace {

constexpr int MARK_SIZE = 3;
constexpr int ESCAPE = 0xf0;
constexpr int MAX_RUN = 1 << 24;
constexpr int LINE_MARK = 0x0c;
constexpr int LABEL_SIZE = 80;
constexpr int NUM_LEVELS = 17;
constexpr float NO_ECHO = -100.0F;
constexpr float LAMBERT_LON = -96.03F;  ///< centre longitude of every Lambert mosaic

}  // namespace

int NowradFile::open(const char* name) {
  close();
  start();
  opened = file.open(name, "r") != 0;
  return opened ? 1 : 0;
}

int NowradFile::rewind() {
  start();
  return file.rewind();
}

int NowradFile::close() {
  if (!opened) return 0;
  opened = false;
  return file.close();
}

/** Back to what is known ahead of the header. */
void NowradFile::start() {
  data.fill(0);
  pre = 0;
  held = -1;
  num = run = col = col_mask = 0;
  tot_run = height = width = 0;
  label.clear();
  date.init();
  domain.init();
}

int NowradFile::readMark(int code) {
  return file.read(data.data(), MARK_SIZE) == MARK_SIZE && isMark(code) ? 1 : 0;
}

int NowradFile::readHeader() {
  if (!opened) return 0;
  start();
  unsigned char n = 0;
  if (readMark(0x09) == 0 || file.read(&n, 1) != 1) return 0;
  std::array<char, 256> unused{};  // a text and one byte more
  if (file.read(unused.data(), size_t{n} + 1) != n + 1) return 0;
  if (readMark(0x0a) == 0 || file.scanf("%9d %9d", &height, &width) != 2) return 0;
  if (height < 1 || width < 1 || readMark(0x03) == 0 || readLabel() == 0) return 0;
  if (readMark(0x0b) == 0 || readProjection() == 0) return 0;
  return file.read(data.data(), MARK_SIZE) == MARK_SIZE ? 1 : 0;
}

/** Label and time. @return 0 if the file ends */
int NowradFile::readLabel() {
  char text[LABEL_SIZE + 1] = {};
  if (file.read(text, LABEL_SIZE) != LABEL_SIZE) return 0;
  const char* time = nullptr;
  if (std::strncmp(text, "NOWrad Master", 13) == 0) {
    label = "NOWRad Radar Master Composite [dBZ]";
    time = text + 20;
  } else if (std::strncmp(text, "USRAD Hi", 8) == 0) {
    label = "NOWRad Radar US Composite [dBZ]";
    time = text + 23;
  }
  int hour = 0;
  int minute = 0;
  int day = 0;
  int year = 0;
  char month[4] = {};
  if (time != nullptr &&
      std::sscanf(time, "%4d:%4d %4d-%3s-%4d", &hour, &minute, &day, month, &year) == 5) {
    date.set(year, DateTool::decodeMonth(month), day, hour, minute, Const::FMISS);
  }
  return 1;
}

/** The domain. Angles are in radians; of those of a Lambert mosaic only the ones that state the
 * projection are turned to degrees. */
int NowradFile::readProjection() {
  char kind = '\0';
  if (file.read(&kind, 1) != 1) return 0;
  DomainVal val;
  if (kind == 'C') {
    val.proj = DomainVal::LATLON;
    if (file.scanf("%30f %30f", &val.clon, &val.clat) != 2) return 0;
    if (file.scanf("%*30f %30f %30f", &val.dy, &val.dx) != 2) return 0;
    for (float* v : {&val.clon, &val.clat, &val.dy, &val.dx}) *v *= Const::RDC;
    // What is given is the upper edge.
    val.clat -= val.dy * static_cast<float>(height - 1) / 2.0F;
  } else if (kind == 'L') {
    val.proj = DomainVal::LAMB;
    if (file.scanf("%30f %30f", &val.param[1], val.param.data()) != 2) return 0;
    if (file.scanf("%30f %30f", &val.plat, &val.plon) != 2) return 0;
    if (file.scanf("%30f %30f", &val.clon, &val.clat) != 2) return 0;
    if (file.scanf("%30f %30f", &val.dy, &val.dx) != 2) return 0;
    for (float* v : {&val.param[0], &val.param[1], &val.plat, &val.plon}) *v *= Const::RDC;
    val.clon = LAMBERT_LON;
  } else {
    return 0;
  }
  val.nx = width;
  val.ny = height;
  return domain.set(val);
}

int NowradFile::readLine() {
  unsigned char number[2];
  if (!opened || !isMark(LINE_MARK) || file.read(number, 2) != 2) return 0;
  data.fill(0);
  num = number[0] | static_cast<unsigned int>(number[1]) << 8;
  tot_run = 0;
  col_mask = 0;
  return 1;
}

int NowradFile::readPacket(NowradPacket& packet) {
  if (!opened) return 0;
  const int next = held >= 0 ? held : file.getByte();
  held = -1;
  if (next < 0) return 0;
  const auto b = static_cast<unsigned char>(next);
  run = 0;
  col = b & 15U;
  if (b == 0) {
    // Only a marker byte needs a look at the one behind it, and a step back.
    held = file.getByte();
    if (held == ESCAPE) {
      const int mark = file.getByte();
      if (mark > 0) {
        data = {b, ESCAPE, static_cast<unsigned char>(mark)};
        held = -1;
        return 0;
      }
      if (mark == 0) file.seek(-1, SEEK_CUR);
    }
  }
  switch (b >> 4) {
    case 0x0d: {
      const int low = file.getByte();
      const int high = file.getByte();
      if (high < 0) return 0;
      run = static_cast<unsigned int>(low + high * 256 + 1);
      pre = 1;
      break;
    }
    case 0x0e: {
      const int n = file.getByte();
      if (n < 0) return 0;
      run = static_cast<unsigned int>(n + 1);
      pre = 1;
      break;
    }
    case 0x0f:
      // Behind a zero byte this one would look like a marker, and another zero tells them apart.
      if (pre == 0 && b == ESCAPE && file.getByte() != 0) return 0;
      col_mask = col;
      col = 0;
      pre = 1;
      break;
    default:
      run = (b >> 4) + 1U;
      pre = b;
      break;
  }
  tot_run = std::min(tot_run + static_cast<int>(run), MAX_RUN);
  packet = {static_cast<int>(run), static_cast<int>(col), static_cast<int>(col_mask)};
  return 1;
}

int NowradFile::read(Image& image) {
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
  image.setValue(0, NO_ECHO);
  for (int i = 1; i < NUM_LEVELS; i++) image.setValue(i, 5.0F * static_cast<float>(i));

  for (int y = 0; y < image.getHeight() && readLine() != 0; y++) {
    unsigned char* row = image.findRow(y);
    int x = 0;
    NowradPacket packet;
    while (readPacket(packet) != 0) {
      const int n = std::min(packet.run, image.getWidth() - x);
      if (row != nullptr && n > 0) {
        std::memset(row + x, packet.val, static_cast<size_t>(n));
        x += n;
      }
    }
  }
  return 1;
}

}  // namespace ZQV
