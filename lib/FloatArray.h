#pragma once

#include <vector>

namespace ZQV {

/** Growable array of floats; reading out of range gives the missing value. */
class FloatArray {
 public:
  FloatArray() = default;
  explicit FloatArray(int n) { init(n); }
  /** Empty, with room for n values. @return 1 */
  int init(int n);
  int add(float v);
  /** Sets value i, growing by at most 10 past the capacity. @return 1; 0 for a negative i or one
   * too far */
  int set(int i, float v);
  /** A negative i counts from the end. @return 1; 0 out of range */
  int get(int i, float& v) const;
  /** Const::FMISS out of range. */
  [[nodiscard]] float get(int i) const;
  /** Adds v to value i. @return 1; 0 out of range */
  int offset(int i, float v);
  /** Room for n more values. @return 1 */
  int expand(int n);
  void clear() { num = 0; }
  [[nodiscard]] int getNum() const { return num; }

 private:
  [[nodiscard]] int place(int i) const { return i < 0 ? i + num : i; }
  int num = 0;
  std::vector<float> vals;
};

}  // namespace ZQV
