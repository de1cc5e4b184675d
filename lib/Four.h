#pragma once

#include <cstring>
#ifdef __SSE__
#include <xmmintrin.h>
#endif

namespace ZQV {

/** Four numbers at once, one instruction each where the processor has such: the corners of a bin.
 * Types and operators are those of the compiler's vector extension (GCC 12, Clang). */
struct Four {
  using Floats = float __attribute__((vector_size(16)));
  using Ints = int __attribute__((vector_size(16)));

  static Floats load(const float* from) {
    Floats v;
    std::memcpy(&v, from, sizeof(v));
    return v;
  }
  static void store(Floats v, float* to) { std::memcpy(to, &v, sizeof(v)); }
#ifdef __SSE__
  // g++ makes three instructions of the comparison.
  static Floats least(Floats a, Floats b) {
    return _mm_min_ps(a, b);
  }
  static Floats most(Floats a, Floats b) {
    return _mm_max_ps(a, b);
  }
#else
  static Floats least(Floats a, Floats b) {
    return a < b ? a : b;
  }
  static Floats most(Floats a, Floats b) {
    return a > b ? a : b;
  }
#endif
  static Floats all(float v) {
    return Floats{v, v, v, v};
  }
  /** Toward zero; the numbers fit. */
  static Ints cut(Floats v) {
    return __builtin_convertvector(v, Ints);
  }

  /** Whether a comparison holds for all four. */
  static bool holds(Ints v) {
#ifdef __SSE__
    return _mm_movemask_ps(reinterpret_cast<Floats>(v)) == 15;
#else
    return (v[0] & v[1] & v[2] & v[3]) != 0;
#endif
  }

  /** Smallest x, largest x with its sign turned, and so for y. */
  static Floats bounds(Floats x, Floats y) {
    const Floats x_pairs = least(__builtin_shufflevector(x, -x, 0, 4, 1, 5),
                                 __builtin_shufflevector(x, -x, 2, 6, 3, 7));
    const Floats y_pairs = least(__builtin_shufflevector(y, -y, 0, 4, 1, 5),
                                 __builtin_shufflevector(y, -y, 2, 6, 3, 7));
    return least(__builtin_shufflevector(x_pairs, y_pairs, 0, 1, 4, 5),
                 __builtin_shufflevector(x_pairs, y_pairs, 2, 3, 6, 7));
  }
};

}  // namespace ZQV
