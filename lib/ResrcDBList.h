#pragma once

#include <cstddef>
#include <vector>

namespace ZQV {

/** Declaration of a known resource. The texts are static and aren't copied. */
struct ResrcDBItem {
  const char* name;   ///< key in the store
  const char* env;    ///< short environment name
  const char* cmdln;  ///< short command-line key, absent for a positional resource
  const char* help;   ///< help line
};

/** Append-only list of declared resources, in the order of the help text. */
class ResrcDBList {
 public:
  int add(const char* name, const char* env, const char* cmdln, const char* help);
  void rewind() { cur = 0; }
  /** The current item, stepping on; absent at the end until the next rewind(). */
  const ResrcDBItem* next();
  /** Absent past the end. */
  [[nodiscard]] const ResrcDBItem* get(int i) const;
  [[nodiscard]] int getNum() const { return static_cast<int>(items.size()); }
  [[nodiscard]] auto begin() const { return items.begin(); }
  [[nodiscard]] auto end() const { return items.end(); }

 private:
  std::vector<ResrcDBItem> items;
  size_t cur = 0;
};

}  // namespace ZQV
