// Date texts, label texts, formats and zones.

#include <cstdint>
#include <string>

#include "Date.h"
#include "DateTool.h"
#include "String.h"
#include "Timezone.h"

using namespace ZQV;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const size_t half = text.find('|');
  const std::string first = text.substr(0, half);
  const std::string second = half == std::string::npos ? "" : text.substr(half + 1);
  Date date;
  String out;
  DateTool::decode(first.c_str(), date);
  DateTool::createLabel(date, Timezone(second.c_str()), out);
  date.toText(second.c_str(), out);
  if (first.compare(0, 2, "cu") != 0) {
    date.set(first.c_str());
  }
  const Timezone zone(second.c_str());
  DateTool::createLabel(first.c_str(), date, zone, 1, out);
  DateTool::createLabel(date, zone, second.c_str(), static_cast<float>(size), out);
  date.changeTimezone(zone.getOffset(), zone.getName());
  date.addMonths(DateTool::getMinutes(first.c_str()));
  date.addHours(DateTool::getMinutes(second.c_str()));
  date.addYears(static_cast<int>(DateTool::getSeconds(first.c_str())));
  date.adjustHour(DateTool::getMinutes(second.c_str()) % 40, static_cast<int>(size) % 30);
  date.fix();
  date.toText(out);
  return 0;
}
