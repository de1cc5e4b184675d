#include "FloatArray.h"

#include <algorithm>

#include "Const.h"

namespace ZQV {

namespace {
constexpr int step = 10;
}

int FloatArray::init(int n) {
  num = 0;
  vals.assign(static_cast<size_t>(std::max(n, 0)), Const::FMISS);
  return 1;
}

int FloatArray::add(float v) {
  return set(num, v);
}

int FloatArray::set(int i, float v) {
  if (i < 0) {
    return 0;
  }
  const int max = static_cast<int>(vals.size());
  if (i >= max) {
    if (i - max >= step) {
      return 0;
    }
    expand(step);
  }
  vals[static_cast<size_t>(i)] = v;
  num = std::max(num, i + 1);
  return 1;
}

int FloatArray::get(int i, float& v) const {
  const int at = place(i);
  if (at < 0 || at >= num) {
    return 0;
  }
  v = vals[static_cast<size_t>(at)];
  return 1;
}

float FloatArray::get(int i) const {
  float v = Const::FMISS;
  get(i, v);
  return v;
}

int FloatArray::offset(int i, float v) {
  const int at = place(i);
  if (at < 0 || at >= num) {
    return 0;
  }
  vals[static_cast<size_t>(at)] += v;
  return 1;
}

int FloatArray::expand(int n) {
  vals.resize(vals.size() + static_cast<size_t>(std::max(n, 0)), Const::FMISS);
  return 1;
}

}  // namespace ZQV
