#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <variant>

namespace ZQV {

/** Scanner of coded text by a format. The text isn't copied and has to stay where it is; it may
 *  hold NUL characters and has a further one behind its end. A scan doesn't move the read position:
 *  the caller looks at how far it got and then steps on with inc().
 *
 *  In a format a blank stands for one or more white space characters (blank, line feed, carriage
 *  return, tab), and any character but "%" for itself. A conversion is "%", "*" to assign nothing,
 *  "<" if a width is a limit and not the exact length, a width (a limit of 999 without), "!text!"
 *  that stands for a missing number, and its kind:
 *
 *      n        nothing; stores the position in the text
 *      (a|b)    the first of the texts that is there; with "<" and no width also none of them
 *      [set]    characters of a set: /A letters, /N digits, // a slash; [^set] all others
 *      A N      letters; digits
 *      s        up to 80 characters other than white space
 *      S        anything up to the end of the text
 *      c        exactly the width, 1 without; not terminated
 *      d f      an integer; a number with an optional exponent
 *      D F      the same with white space inside the width, before and behind
 *      w W      blanks, carriage returns and tabs; blanks, line feeds and tabs
 *
 *  A conversion that finds no characters, or with an exact width not as many, ends the scan, as
 *  does one without a variable of its type. Numbers that don't fit are brought to the nearest that
 *  does. */
class Scanp {
 public:
  /** From the start of a text; an absent one is empty. */
  void set(const char* text);
  /** The same with its first n characters; the one behind them has to be a NUL. */
  void set(const char* text, int n);

  /** Matches a format from the read position on.
   *  @param targets  variables of the conversions that assign: int (d, D, n), float (f, F), char
   *    (c), and arrays of char for all that are texts, which are cut to the array and terminated
   *  @return conversions that matched, those without assignment included; -1 for an empty format,
   *    and at the end of the text */
  template <class... T>
  int scan(const char* format, T&... targets) {
    const std::array<Target, sizeof...(T)> list{target(targets)...};
    return run(format, list);
  }
  /** Matches likewise, and steps over what was used. */
  template <class... T>
  int take(const char* format, T&... targets) {
    const int n = scan(format, targets...);
    inc();
    return n;
  }
  /** Looks for a text from the read position on; length() is then the distance to it. @return 1; 0
   * if it isn't there */
  int search(const char* text);

  /** Steps over what the last scan or search used. @return 1 */
  int inc() { return inc(len); }
  /** The read position stays within the text. @return 1 */
  int inc(int n);
  int offset(int n);
  [[nodiscard]] int getOffset() const { return off; }
  /** The text from the read position on. */
  [[nodiscard]] const char* string() const { return str + off; }
  /** Character i from the read position on; a NUL out of the text. */
  [[nodiscard]] char getChar(int i) const {
    return i >= -off && i < str_len - off ? str[off + i] : '\0';
  }

  /** Characters used by the last scan, up to where it ended. */
  [[nodiscard]] int length() const { return len; }
  /** What the last scan returned, 0 for -1. */
  [[nodiscard]] int matched() const { return match; }
  [[nodiscard]] int assigned() const { return tot_assign; }
  /** The last scan came to the end of its format. */
  [[nodiscard]] bool finished() const { return finish; }
  /** Writes text, its length, and position, use and matches of the last scan. */
  void print() const;

 private:
  using Target = std::variant<int*, float*, std::span<char>>;
  struct Conversion;

  static Target target(int& v) { return &v; }
  static Target target(float& v) { return &v; }
  static Target target(char& v) { return std::span<char>(&v, 1); }
  template <size_t N>
  static Target target(char (&v)[N]) {
    return std::span<char>(v);
  }

  int run(const char* format, std::span<const Target> targets);
  [[nodiscard]] std::string_view rest(int pos) const {
    return {str + pos, static_cast<size_t>(str_len - pos)};
  }

  const char* str = "";
  int str_len = 0;
  int off = 0;
  int len = 0;
  int tot_assign = 0;
  int match = 0;
  bool finish = false;
};

}  // namespace ZQV
