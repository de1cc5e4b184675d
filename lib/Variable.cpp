#include "Variable.h"

#include <cstdio>

#include "StrLib.h"
#include "String.h"

namespace ZQV {

Variable::Variable(const char* short_name, const char* unit, const char* words)
    : name(StrLib::acopy(short_name)), units(StrLib::acopy(unit)), label(StrLib::acopy(words)) {}

int Variable::set(const char* short_name) {
  name = StrLib::acopy(short_name);
  return 1;
}

int Variable::setUnits(const char* unit) {
  units = StrLib::acopy(unit);
  return 1;
}

int Variable::setLabel(const char* words) {
  label = StrLib::acopy(words);
  return 1;
}

const char* Variable::getLabel() const {
  return label.empty() ? name.c_str() : label.c_str();
}

int Variable::toLabel(String& out) const {
  out.copy(getLabel());
  if (!units.empty()) {
    out.append(" [");
    out.append(units.c_str());
    out.append("]");
  }
  return 1;
}

void Variable::print() const {
  std::printf("%s %s %s\n", name.c_str(), units.c_str(), getLabel());
}

}  // namespace ZQV
