#include "ScopeView.h"

#include <cstdio>

#include "Domain.h"
#include "DomainTool.h"
#include "FileTool.h"
#include "Image.h"
#include "ImageFile.h"
#include "KavradFile.h"
#include "NowradFile.h"
#include "StrLib.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr const char* default_table = "rad.clr";
/** Colours of reflectivity, dBZ, of images. */
constexpr const char* image_fill =
    "-100:off,5:blue,10:lblue,15:cyan,20:lcyan,25:green,30:lgreen,35:brown,40:yellow,45:red,"
    "50:lred,55:magenta,60:lmagenta,65:dgray,70:lgray,75:white";

/** Name of a type on standard output and in messages. */
const char* typeName(int type) {
  switch (type) {
    case ScopeView::MDR: return "mdr";
    case ScopeView::MDR_SITE: return "mdrsite";
    case ScopeView::RCM: return "rcm";
    case ScopeView::RCM_SITE: return "rcmsite";
    case ScopeView::IMAGE: return "img";
    case ScopeView::NIDS: return "nids";
    case ScopeView::LEV2: return "lev2";
    case ScopeView::NOWRAD: return "now";
    case ScopeView::KAVRAD: return "kav";
    default: return "";
  }
}

}  // namespace

ScopeView::ScopeView(const char* params) {
  ScopeView::init();
  ScopeView::setParam(params);
}

int ScopeView::init() {
  sync = 0;
  type = RCM;
  ScopeView::setNameConv("rcm_cvt");
  if (Zqv::getResrc("input") != nullptr) {
    ScopeView::setInput(Zqv::getResrc("input"));
  }
  ScopeView::setFile();
  if (FileTool::checkPath(Zqv::getDatabasePath(), default_table) != 0) {
    setColorTable(default_table);
  }
  if (Zqv::getResrc("color_table") != nullptr) {
    setColorTable(Zqv::getResrc("color_table"));
  }
  if (Zqv::getResrc("color_fill") != nullptr) {
    setColorFill(Zqv::getResrc("color_fill"));
  }
  ScopeView::setParam(Zqv::getResrc("parameter"));
  return 1;
}

int ScopeView::setFile() {
  if (Zqv::getResrc("in_file") != nullptr) {
    setNameConv(Zqv::getResrc("in_file"));
  }
  // After the convention, so that an explicit input type wins over the one that it brought.
  if (Zqv::getResrc("input") != nullptr) {
    setInput(Zqv::getResrc("input"));
  }
  if (Zqv::getResrc("hour") != nullptr) {
    setHour(Zqv::getResrc("hour"));
  }
  if (Zqv::getResrc("num_hour") != nullptr) {
    filename.setNumFiles(Zqv::getResrc("num_hour"));
  }
  return 1;
}

int ScopeView::getType(const char* name) {
  static constexpr struct {
    const char* name;
    int length;  ///< characters compared, 0 for all
    int type;
  } rows[] = {{"mdr", 0, MDR},    {"mdrsite", 0, MDR_SITE}, {"rcm", 0, RCM},
              {"rcmg", 0, RCM},   {"rcmsite", 0, RCM_SITE}, {"img", 0, IMAGE},
              {"kav", 3, KAVRAD}, {"now", 3, NOWRAD},       {"nids", 0, NIDS},
              {"lev2", 0, LEV2},  {"lev2z", 0, LEV2}};
  for (const auto& row : rows) {
    if (row.length > 0 ? StrLib::equal(name, row.name, row.length)
                       : StrLib::equal(name, row.name)) {
      return row.type;
    }
  }
  return NONE;
}

int ScopeView::setInput(const char* name) {
  const int wanted = getType(name);
  if (wanted != NONE) {
    type = wanted;
  }
  setReports(name);
  switch (wanted) {
    case NIDS: nids.setNameConv("nids"); break;
    case LEV2: lev2.setNameConv("lev2"); break;  // of compressed volumes too
    default: break;
  }
  return 1;
}

/** Tells the renderers of coded reports which of their inputs is meant. */
void ScopeView::setReports(const char* name) {
  switch (getType(name)) {
    case MDR:
    case MDR_SITE: mdr.setInput(name); break;
    case RCM: rcm.setInput(StrLib::equal(name, "rcmg") ? "mosg" : "mos"); break;
    case RCM_SITE: rcm.setInput("site"); break;
    default: break;
  }
}

RadarPlot* ScopeView::radar() {
  switch (type) {
    case MDR:
    case MDR_SITE: return &mdr;
    case RCM:
    case RCM_SITE: return &rcm;
    case NIDS: return &nids;
    case LEV2: return &lev2;
    default: return nullptr;
  }
}

int ScopeView::setNameConv(const char* conv) {
  filename.setNameConv(conv);
  if (StrLib::valid(filename.getType()) && getType(filename.getType()) != NONE) {
    type = getType(filename.getType());
    setReports(filename.getType());
  }
  if (Zqv::getResrc("num_hour") != nullptr) {
    filename.setNumFiles(Zqv::getResrc("num_hour"));
  }
  if (radar() != nullptr) {
    radar()->setNameConv(conv);
  }
  return 1;
}

int ScopeView::setHour(const char* hour) {
  if (radar() != nullptr) {
    radar()->setHour(hour);
  } else {
    filename.setFixDate(hour);
  }
  return 1;
}

int ScopeView::setFilename() {
  if (radar() != nullptr) {
    radar()->setFilename();
  } else {
    filename.setFilePrompt("Enter the radar filename: ");
  }
  return 1;
}

int ScopeView::setFilename(const char* text) {
  if (radar() != nullptr) {
    radar()->setFilename(text);
  } else {
    filename.setFile(text);
  }
  return 1;
}

int ScopeView::setFilename(Date& date) {
  if (radar() != nullptr) {
    radar()->setFilename(date);
  } else {
    filename.setDate(date);
  }
  return 1;
}

int ScopeView::setFilename(Date& date, const char* text) {
  // Level II goes to the NIDS renderer, so that a loop over it moves that selection: deliberate.
  if (type == LEV2) {
    nids.setFilename(date, text);
  } else if (radar() != nullptr) {
    radar()->setFilename(date, text);
  } else {
    filename.setDate(date, text);
  }
  return 1;
}

int ScopeView::setForeTime(const char* /*time*/) {
  return 1;
}

int ScopeView::getDate(Date& date) {
  return radar() != nullptr ? radar()->getDate(date) : filename.getDate(date);
}

int ScopeView::getInitDate(Date& date) {
  if (!filename.isSet()) {
    filename.setFile("la");
  }
  return getDate(date);
}

int ScopeView::getDateOffset() {
  return radar() != nullptr ? radar()->getDateOffset() : filename.getOffset();
}

int ScopeView::getNumFrames() {
  return radar() != nullptr ? radar()->getNumFrames() : filename.getNumFiles();
}

int ScopeView::getDomain(Domain& domain) {
  if (radar() != nullptr && type != MDR && type != RCM) {
    radar()->getDomain(domain);
  } else {
    DomainTool::set(domain, "us");
  }
  return 1;
}

int ScopeView::setColorTable(const char* name) {
  color_table.copy(StrLib::valid(name, ""));
  mdr.setColorTable(name);
  rcm.setColorTable(name);
  nids.setColorTable(name);
  lev2.setColorTable(name);
  img.setColorTable(name);
  return 1;
}

int ScopeView::setColorFill(const char* list) {
  color_fill.copy(StrLib::valid(list, ""));
  mdr.setColorFill(list);
  rcm.setColorFill(list);
  nids.setColorFill(list);
  lev2.setColorFill(list);
  img.setColorFill(list);
  return 1;
}

int ScopeView::setColor(const char* text) {
  mdr.setColor(text);
  rcm.setColor(text);
  nids.setColor(text);
  return 1;
}

int ScopeView::setVariable(const char* text) {
  mdr.setVariable(text);
  rcm.setVariable(text);
  nids.setVariable(text);
  return 1;
}

int ScopeView::setMap(int flag) {
  mdr.setMap(flag);
  rcm.setMap(flag);
  nids.setMap(flag);
  lev2.setMap(flag);
  img.setMap(flag);
  return 1;
}

int ScopeView::setParam(const char* text) {
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const char* value = items.getStringAfter(i, '=');
    if (items.iequal(i, "fi=", 3)) {
      setFilename(value);
    } else if (items.iequal(i, "in", 2)) {
      setInput(value);
    } else if (items.iequal(i, "nc", 2) || items.iequal(i, "if", 2)) {
      setNameConv(value);
    } else if (items.equal(i, "ho", 2)) {
      setHour(value);
    } else if (items.iequal(i, "cof", 3)) {
      color_fill.copy(StrLib::valid(value, ""));
    } else if (items.iequal(i, "sync")) {
      sync = 1;
    }
  }
  mdr.setParam(text);
  rcm.setParam(text);
  img.setParam(text);
  nids.setParam(text);
  lev2.setParam(text);
  return 1;
}

int ScopeView::draw(Plot& plot) {
  if (!filename.isSet()) {
    filename.setFile("la");
  }
  switch (type) {
    case IMAGE: return drawFile<ImageFile>(plot, "Image");
    case NOWRAD: return drawFile<NowradFile>(plot, "Nowrad");
    case KAVRAD: return drawFile<KavradFile>(plot, "Kavrad");
    default: break;
  }
  if (radar() != nullptr) {
    radar()->draw(plot);
  }
  return 1;
}

/** Draws what can be read of an image-like file. @return 1; 0 with a warning if it can't be opened
 */
template <typename File>
int ScopeView::drawFile(Plot& plot, const char* kind) {
  File file;
  if (file.open(filename.getName()) == 0) {
    Zqv::outWarning("ScopeView: Unable to open %s file: %s\n", kind, filename.getName());
    Zqv::setFileError(filename.getName());
    return 0;
  }
  Image image;
  file.read(image);
  if (!image.validData()) {
    Zqv::setError(Zqv::NODATA);
  }
  return draw(plot, image);
}

int ScopeView::draw(Plot& plot, Image& image) {
  img.setColorFill(color_fill.valid() ? color_fill.get() : image_fill);
  img.draw(plot, image);
  return 1;
}

int ScopeView::print() {
  std::printf("ScopeView\nType: %s\n", typeName(type));
  return 1;
}

void ScopeView::callback(const char* /*name*/, const char* /*data*/, const void* /*source*/) {}

}  // namespace ZQV
