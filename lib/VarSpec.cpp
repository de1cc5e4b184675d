#include "VarSpec.h"

#include <cstdio>

#include "Date.h"
#include "DateTool.h"
#include "StrLib.h"
#include "String.h"
#include "Timezone.h"

namespace ZQV {

int VarSpec::toInfoLabel(String& out) const {
  out.clear();
  if (!isSet()) {
    return 0;
  }
  if (level.toString(out) != 0) {
    out.append(' ');
  }
  String words;
  var.toLabel(words);
  out.append(words.get());
  return 1;
}

int VarSpec::toDateLabel(const Date& date, const Timezone& zone, const char* text,
                         String& out) const {
  if (ftime.isSet()) {
    return DateTool::createLabel(date, zone, StrLib::valid(text, ""), ftime, out);
  }
  return StrLib::valid(text) ? DateTool::createLabel(text, date, zone, out)
                             : DateTool::createLabel(date, zone, out);
}

void VarSpec::print() const {
  String text;
  toInfoLabel(text);
  std::printf("%s\n", text.get());
}

}  // namespace ZQV
