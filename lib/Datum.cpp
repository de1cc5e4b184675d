#include "Datum.h"

#include <cstdarg>
#include <cstdio>

#include "StrLib.h"

namespace ZQV {

void Datum::initVals() {
  type = Const::MISS;
  format[0] = '\0';
  data[0] = '\0';
  value = no_values;
}

void Datum::set(const EarthPoint& place, int what, float v, const char* form) {
  initVals();
  ept = place;
  type = what;
  value[0] = v;
  setFormat(form);
}

void Datum::set(const EarthPoint& place, int what, const char* text, const char* form) {
  initVals();
  ept = place;
  type = what;
  setData(text);
  setFormat(form);
}

void Datum::set(float lat, float lon, int what, float v, const char* form) {
  set(EarthPoint(lat, lon), what, v, form);
}

void Datum::set(float lat, float lon, int what, const char* text, const char* form) {
  set(EarthPoint(lat, lon), what, text, form);
}

void Datum::setId(const char* text) {
  StrLib::copy(id, sizeof id, text);
}

int Datum::setValue(int i, float v) {
  if (!inRange(i)) {
    return 0;
  }
  value[static_cast<size_t>(i)] = v;
  return 1;
}

int Datum::offsetValue(int i, float v) {
  const float old = getValue(i);
  return setValue(i, old == Const::FMISS ? old : old + v);
}

int Datum::scaleValue(int i, float f) {
  const float old = getValue(i);
  return setValue(i, old == Const::FMISS ? old : old * f);
}

void Datum::setData(const char* text) {
  StrLib::copy(data, sizeof data, text);
}

void Datum::setData(char c) {
  StrLib::copy(data, sizeof data, c);
}

int Datum::formatData(const char* form, ...) {
  data[0] = '\0';
  if (form == nullptr) {
    return 0;
  }
  va_list args;
  va_start(args, form);
  std::vsnprintf(data, sizeof data, form, args);
  va_end(args);
  return StrLib::length(data);
}

void Datum::setFormat(const char* form) {
  StrLib::copy(format, sizeof format, form);
}

void Datum::addFormat(const char* form) {
  if (StrLib::valid(format) && StrLib::valid(form)) {
    StrLib::append(format, sizeof format, ",");
  }
  StrLib::append(format, sizeof format, form);
}

float Datum::getValue(int i) const {
  return inRange(i) ? value[static_cast<size_t>(i)] : Const::FMISS;
}

void Datum::print() const {
  std::printf("Datum %s %d %d [%s] %s", id, type, index, format, data);
  for (const float v : value) {
    std::printf(" %f", static_cast<double>(v));
  }
  std::printf(" ");
  ept.print();
}

}  // namespace ZQV
