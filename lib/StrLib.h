#pragma once

#include <string>

namespace ZQV {

/** Static operations on plain character texts. Every one tolerates an absent pointer and then gives
 *  0, false, -1 (positions) or Const::MISS (numbers). Letters are ASCII, the locale is "C". */
class StrLib {
 public:
  static int clear(char* s);
  static int length(const char* s);
  static int replace(char* s, char a, char b);
  /** Removes white space at the end. */
  static int trimWS(char* s);
  /** Removes white space everywhere. */
  static int stripWS(char* s);
  static int chop(char* s);
  static int lowCase(char* s);
  static int upCase(char* s);
  /** Lower-cases every character that doesn't follow a blank. The first character and those after a
   *  blank stay as they are: no letter is ever raised. */
  static int upCaseFirst(char* s);

  /** The same operations on a std::string. */
  static void trimWS(std::string& s);
  static void stripWS(std::string& s);
  static void lowCase(std::string& s);
  static void upCase(std::string& s);

  static int toInt(const char* s);
  static int toInt(const char* s, int start);
  /** Fixed-column field of len characters from start, cut at the end of s and trimmed;
   *  Const::MISS for an empty field. */
  static int toInt(const char* s, int start, int len);
  static float toFloat(const char* s);
  static float toFloat(const char* s, int start);
  static float toFloat(const char* s, int start, int len);
  /** Copies the field, at most maxlen characters (out holds maxlen + 1). */
  static int subString(const char* s, int start, int len, char* out, int maxlen);
  /** Field number n, from 0, of fields separated by runs of delim; absent if there are fewer. */
  static const char* getField(const char* s, char delim, int n);

  static int index(const char* s, char c);
  static int lastIndex(const char* s, char c);
  /** Position of occurrence number n, from 0. */
  static int index(const char* s, char c, int n);
  static int occurs(const char* s, char c);
  static int where(const char* s, const char* t);
  static bool contains(const char* s, const char* t);
  /** One of the delim-separated tokens of s equals t exactly. */
  static bool hasToken(const char* s, char delim, const char* t);

  static bool equal(const char* s, const char* t);
  static bool iequal(const char* s, const char* t);
  /** n of 1 and up: the texts agree in their first n characters (a text that ends earlier agrees
   * only if both end there). n of 0 or below: the last -n characters of s equal the whole of t. */
  static bool equal(const char* s, const char* t, int n);
  static bool iequal(const char* s, const char* t, int n);
  /** t has length n exactly and the first n characters of s equal it. */
  static bool equal(const char* s, int n, const char* t);
  /** Difference of the lower-cased characters at the first mismatch, 0 if there is none. */
  static int icmp(const char* s, const char* t);
  static int icmp(const char* s, const char* t, int n);

  /** Bounded copies: at most size - 1 characters, always terminated. An absent src empties dst and
   *  gives 0. */
  static int copy(char* dst, int size, const char* src);
  /** One character; 0 if size is below 2. */
  static int copy(char* dst, int size, char c);
  /** The first n characters; a negative n counts from the end (-1 the whole text). */
  static int copy(char* dst, int size, const char* src, int n);
  static int bcopy(char* dst, int size, const char* src, int n);
  static int append(char* dst, int size, const char* src);
  static int append(char* dst, int size, const char* src, int n);
  /** An owned copy; the counted form follows the rule of copy(dst, size, src, n). */
  static std::string acopy(const char* s);
  static std::string acopy(const char* s, int n);
  /** Bounded formatting. @return the length of the result */
  static int printf(char* dst, int size, const char* format, ...)
      __attribute__((format(printf, 3, 4)));
  static int aprintf(char* dst, int size, const char* format, ...)
      __attribute__((format(printf, 3, 4)));

  /** A negative i counts from the end; out of range gives 0. */
  static char getChar(const char* s, int i);
  static bool setChar(char* s, int i, char c);

  /** Valid text of an optional "-" and digits to the end. "-" alone passes: deliberate. */
  static bool isNum(const char* s);
  /** The first n characters are digits. */
  static bool isNum(const char* s, int n);
  /** From the end: characters below 32 go up to the last ordinary one, those further in become
   * blanks. The comparison is on signed characters, so bytes of 128 and up count as control
   * characters. */
  static int clean(char* s);
  static bool valid(const char* s) { return s != nullptr && *s != '\0'; }
  /** s if valid, else t. */
  static const char* valid(const char* s, const char* t) { return valid(s) ? s : t; }
  /** Has a character other than a blank. */
  static bool validData(const char* s);
  /** Has a letter or digit. */
  static bool isAlphaNum(const char* s);
  /** Matches s, item by item, with a template: A letter or digit, a letter, d digit, b blank or
   * tab, c control, l lower, u upper, p punctuation, s white space, g printing but no blank, [...]
   * one of those listed, anything else itself. s may be longer, a shorter s fails. */
  static bool check(const char* s, const char* pattern);
};

}  // namespace ZQV
