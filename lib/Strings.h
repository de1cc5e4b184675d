#pragma once

#include <string>
#include <vector>

namespace ZQV {

/** List of tokens split from a text, at runs of white space or at a delimiter with double-quote
 *  protection. Reading out of range gives the value for absent (nullptr, false, 0, Const::MISS),
 *  so that callers needn't test the count. */
class Strings {
 public:
  Strings() = default;
  Strings(int argc, const char* const* argv);
  /** Splits at runs of white space, without quotes. */
  explicit Strings(const char* text);
  /** Splits at every delim; see set(text, delim, max). */
  Strings(const char* text, char delim);
  Strings(const char* text, char delim, int max);
  /** n empty slots. */
  explicit Strings(int n);

  int set(int argc, const char* const* argv);
  int set(const char* text);
  int set(const char* text, char delim);
  /** Splits at every delim outside quotes. A double quote opens a quoted token only at the very
   * start or directly after a delimiter, and closes at the first one that ends the text or stands
   * before a delimiter; that pair is removed. With max of at least 1 the last of at most max tokens
   * holds the rest, delimiters included; a negative max means no limit. An absent or empty text has
   * no tokens. @return 1 */
  int set(const char* text, char delim, int max);
  /** n empty slots. @return 1; 0 for a negative n */
  int set(int n);
  /** Fills slot i. @return 1; 0 out of range */
  int set(int i, const char* text);
  /** Appends a token. @return 1 */
  int add(const char* text);
  void clear() { vals.clear(); }

  [[nodiscard]] int getNum() const { return static_cast<int>(vals.size()); }
  [[nodiscard]] const char* getString(int i) const;
  /** From the first c on, with c itself; absent if there is none. */
  [[nodiscard]] const char* getString(int i, char c) const;
  /** From character off on; absent if off is at or past the end. */
  [[nodiscard]] const char* getString(int i, int off) const;
  /** What follows the first c; absent if there is none. */
  [[nodiscard]] const char* getStringAfter(int i, char c) const;
  [[nodiscard]] char getChar(int i, int off) const;
  [[nodiscard]] int getLength(int i) const;
  /** In range and not empty. */
  [[nodiscard]] bool valid(int i) const;
  [[nodiscard]] bool equal(int i, const char* text) const;
  [[nodiscard]] bool equal(int i, const char* text, int n) const;
  /** The token from off on equals the text. */
  [[nodiscard]] bool equal(int i, int off, const char* text) const;
  [[nodiscard]] bool iequal(int i, const char* text) const;
  [[nodiscard]] bool iequal(int i, const char* text, int n) const;
  [[nodiscard]] bool iequal(int i, int off, const char* text) const;
  /** Index of the first token exactly equal to text, -1 if none. */
  [[nodiscard]] int find(const char* text) const;
  [[nodiscard]] int index(int i, char c) const;
  [[nodiscard]] bool contains(int i, const char* text) const;
  /** Const::MISS unless Tools::isInt accepts the text at that place; otherwise its number. */
  [[nodiscard]] int getInt(int i) const;
  [[nodiscard]] int getInt(int i, int off) const;
  [[nodiscard]] int getIntAfter(int i, char c) const;
  /** Const::FMISS unless Tools::isFloat accepts the text at that place; otherwise its number. */
  [[nodiscard]] float getFloat(int i) const;
  [[nodiscard]] float getFloat(int i, int off) const;
  [[nodiscard]] float getFloatAfter(int i, char c) const;
  int scanf(int i, const char* format, ...) const __attribute__((format(scanf, 3, 4)));
  int scanf(int i, int off, const char* format, ...) const __attribute__((format(scanf, 4, 5)));
  [[nodiscard]] bool check(int i, const char* pattern) const;
  /** Writes "%d=%s\n" for each token. */
  void print() const;

 private:
  std::vector<std::string> vals;
};

}  // namespace ZQV
