#include "SummaryFile.h"

#include <algorithm>

#include "DateTool.h"
#include "Domain.h"
#include "Grid.h"
#include "Image.h"
#include "StrLib.h"
#include "String.h"

namespace ZQV {

namespace {

constexpr int num_status = 3;
constexpr const char* status_words[num_status] = {"NA", "NE", "OM"};

}  // namespace

int SummaryFile::open(const char* name, int access) {
  close();
  line.clear();
  num = 0;
  past_mosaic = false;
  mode = access;
  if ((access != 0 && access != 1) || file.open(name, access) == 0) {
    return 0;
  }
  opened = true;
  if (access == 0) {
    if (!readHead()) {
      close();
      return 0;
    }
    return 1;
  }
  String label;
  DateTool::createLabel(date, label);
  file.printf("ZQVRAD\n%s\n", label.get());
  return 1;
}

bool SummaryFile::readHead() {
  if (readLine() == 0 || !line.starts_with("ZQVRAD") || readLine() == 0) {
    return false;
  }
  StrLib::trimWS(line);
  DateTool::decode(line.c_str(), date);
  return readLine() != 0 && line.starts_with(title_text);
}

int SummaryFile::close() {
  if (!opened) {
    return 0;
  }
  opened = false;
  return file.close();
}

int SummaryFile::setDate(const Date& d) {
  date = d;
  return 1;
}

int SummaryFile::readLine() {
  char text[1000];
  int n = file.getLine(text, sizeof(text));
  const bool found = n > 0;
  if (found && text[n - 1] != '\n') {
    file.skipLine();
  }
  while (n > 0 && (text[n - 1] == '\n' || text[n - 1] == '\r')) {
    n--;
  }
  line.assign(text, static_cast<size_t>(n));
  return found ? 1 : 0;
}

int SummaryFile::readMosaicLine() {
  if (!past_mosaic && readLine() != 0 && !line.starts_with(stop_text)) {
    return 1;
  }
  past_mosaic = true;
  return 0;
}

const char* SummaryFile::statusWord(int status) {
  return status >= 0 && status < num_status ? status_words[status] : nullptr;
}

int SummaryFile::findStatus(const char* word) {
  int i = 0;
  while (i < num_status && !StrLib::equal(word, status_words[i])) {
    i++;
  }
  return i;
}

int SummaryFile::prepare(const Domain& domain, const char* info, Image& image) const {
  image.init();
  image.set(domain, 8);
  String label;
  DateTool::createLabel(date, label);
  image.setInfo(info);
  image.setDate(date);
  image.setDatim(label.get());
  image.setColorType(Image::DATA);
  return image.allocData() & image.allocValues();
}

int SummaryFile::prepare(const Domain& domain, const char* info, Grid& grid) const {
  grid.init();
  grid.setDomain(domain);
  grid.setSize(domain.getNx(), domain.getNy());
  grid.setInfo(info);
  grid.setDate(date);
  if (grid.allocData() == 0) {
    return 0;
  }
  std::fill_n(grid.getData(), domain.getNx() * domain.getNy(), 0.0F);
  return 1;
}

}  // namespace ZQV
