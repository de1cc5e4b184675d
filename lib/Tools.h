#pragma once

namespace ZQV {

class String;

/** Number checks, number-to-text rules and the safe conversions that every reader uses. */
class Tools {
 public:
  /** Begins with a digit, or "-" and a digit; what follows isn't looked at. */
  static bool isInt(const char* s);
  /** Begins with a digit, "." and digit, "-" and digit, or "-." and digit. */
  static bool isFloat(const char* s);

  /** Writes the bytes that can be printed. */
  static void printClean(const void* data, int n);
  /** Writes printable bytes as they are, others as "[%2.2X]", a line feed as "[0A]\n". */
  static void printControl(const void* data, int n);
  /** Hex dump, 16 bytes a line: the offset as "%8d: ", the bytes as "%02X". */
  static void dumpHex(const void* data, int n);

  /** Value to text with about five significant digits and one trailing zero rule. @return 1 */
  static int toString(float value, String& out);
  static int toString(float value, int digits, String& out);
  /** Value by a format that users and files give, as numFormat() lets it. @return 1 */
  static int toString(float value, const char* format, String& out);
  /** Value in two significant digits and an exponent, exponent * 100 + digits, signed. */
  static int toInt(float value);
  /** Interval for n classes between low and high, rounded up. From 10 up the rounding comes to the
   *  ceiling of the plain quotient and doesn't step to round tens or hundreds: deliberate. */
  static float calcInterval(float high, float low, int n);

  /** Truncates toward zero, saturates at the limits of int; NaN gives 0. */
  static int cut(double value);
  /** The text if it is a format of exactly one floating conversion ("%1.0f", "%.2e dB"), with width
   * and precision of at most two digits; else "%1.0f". For formats that users and files give. */
  static const char* numFormat(const char* format);
};

}  // namespace ZQV
