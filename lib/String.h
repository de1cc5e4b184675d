#pragma once

#include <cstdarg>
#include <string>

namespace ZQV {

/** Owned text buffer with a capacity that is part of its behaviour: copying and appending
 *  grow it, while printf() writes into the capacity at hand and cuts the text there.
 *  A default String takes 79 characters of printf() output. */
class String {
 public:
  /** Empty, with a capacity of 80 characters, the terminator included. */
  String();
  /** Empty, with a capacity of n characters (at least 1), the terminator included. */
  explicit String(int n);
  /** Takes the text with exactly the capacity that it needs; an absent text is empty. */
  String(const char* text);  // NOLINT(google-explicit-constructor): texts pass as Strings
  String(const String& other) = default;
  String(String&& other) noexcept = default;
  /** Takes the text; the capacity only grows. */
  String& operator=(const String& other);
  String& operator=(String&& other) noexcept = default;
  String& operator=(const char* text);
  ~String() = default;

  /** Takes the text and puts the reading position to its start. An absent text clears the first
   *  character and leaves the length as it was: deliberate, callers test the result.
   *  @return 1; 0 for an absent text */
  int copy(const char* text);
  /** The same with the first n characters; a negative n counts from the end (-1 the whole text,
   *  -2 all but its last character). */
  int copy(const char* text, int n);
  int set(const char* text) { return copy(text); }
  /** @return 1; 0 for an absent text */
  int append(const char* text);
  /** Appends the first n characters; a negative n counts from the end. */
  int append(const char* text, int n);
  int append(char c);

  /** Formats into the capacity, cut at getMax() - 1 characters. @return the length */
  int printf(const char* format, ...) __attribute__((format(printf, 2, 3)));
  /** Appends formatted text within the capacity. @return the length */
  int aprintf(const char* format, ...) __attribute__((format(printf, 2, 3)));
  int vprintf(const char* format, va_list args) __attribute__((format(printf, 2, 0)));

  /** Gives a capacity of n (at least 1) and keeps what fits of the text. @return 1 */
  int resize(int n);
  /** Doubles the capacity. @return 1 */
  int resize();

  /** The text, never absent. */
  [[nodiscard]] const char* get() const { return data.c_str(); }
  /** The text from index i. An i above the length becomes the last character, a negative i counts
   *  from the end, and what is still negative becomes 0. */
  [[nodiscard]] const char* get(int i) const;
  /** The character at i, by the same rule. */
  [[nodiscard]] char getChar(int i) const;
  [[nodiscard]] int getLength() const { return len; }
  [[nodiscard]] int getMax() const { return maxlen; }
  /** True when the length is above 0. */
  [[nodiscard]] bool valid() const { return len > 0; }
  void clear();
  /** Cuts the text to n characters: above the length nothing happens, a negative n counts from the
   *  end (-1 removes the last character). @return 1 */
  int trunc(int n);
  /** Removes the last character. @return 1; 0 on an empty text */
  int chop();

  /** Position of the first c, -1 if absent. */
  [[nodiscard]] int index(char c) const;
  /** How often c occurs. */
  [[nodiscard]] int occurs(char c) const;
  [[nodiscard]] bool contains(const char* text) const;
  /** Whole-text and counted comparison, see StrLib::equal. */
  [[nodiscard]] bool equal(const char* text) const;
  [[nodiscard]] bool equal(const char* text, int n) const;
  [[nodiscard]] bool iequal(const char* text) const;
  [[nodiscard]] bool iequal(const char* text, int n) const;
  /** sscanf() over the whole text. @return the number of fields, as sscanf() */
  int scanf(const char* format, ...) const __attribute__((format(scanf, 2, 3)));

  int replace(char a, char b);
  int trimWS();
  int stripWS();
  int upCase();
  int lowCase();
  [[nodiscard]] bool isAlphaNum() const;

  /** Reading position: rewind() puts it to the start; next() gives the character there and steps
   * on, 0 at the end. */
  void rewind() { ptr = 0; }
  char next();

  /** Writes "%d %s\n" with the length and the text. */
  void print() const;

 private:
  void settle();

  std::string data;  ///< the text; its size may lie below len after copy() of an absent text
  int len = 0;
  int maxlen = 80;
  size_t ptr = 0;
};

}  // namespace ZQV
