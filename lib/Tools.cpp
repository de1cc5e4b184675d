#include "Tools.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "String.h"

namespace ZQV {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/** Fixed-point text with as few decimals as the trailing-zero rule leaves. */
std::string fixedText(double value, int precision) {
  char text[400];
  for (;; precision--) {
    std::snprintf(text, sizeof(text), "%.*f", std::max(precision, 0), value);
    std::string shown = text;
    if (precision <= 0 || shown.back() != '0') {
      return shown;
    }
  }
}

}  // namespace

bool Tools::isInt(const char* s) {
  return s != nullptr && (isDigit(s[0]) || (s[0] == '-' && isDigit(s[1])));
}

bool Tools::isFloat(const char* s) {
  if (s == nullptr) {
    return false;
  }
  if (*s == '-') {
    s++;
  }
  return isDigit(s[0]) || (s[0] == '.' && isDigit(s[1]));
}

void Tools::printClean(const void* data, int n) {
  const auto* bytes = static_cast<const unsigned char*>(data);
  for (int i = 0; bytes != nullptr && i < n; i++) {
    if (std::isprint(bytes[i]) != 0) {
      std::putchar(bytes[i]);
    }
  }
}

void Tools::printControl(const void* data, int n) {
  const auto* bytes = static_cast<const unsigned char*>(data);
  for (int i = 0; bytes != nullptr && i < n; i++) {
    if (bytes[i] == '\n') {
      std::printf("[0A]\n");
    } else if (std::isprint(bytes[i]) != 0) {
      std::putchar(bytes[i]);
    } else {
      std::printf("[%2.2X]", static_cast<unsigned>(bytes[i]));
    }
  }
}

void Tools::dumpHex(const void* data, int n) {
  constexpr int per_line = 16;
  const auto* bytes = static_cast<const unsigned char*>(data);
  for (int i = 0; bytes != nullptr && i < n; i++) {
    if (i % per_line == 0) {
      std::printf("%8d: ", i);
    }
    std::printf("%02X", static_cast<unsigned>(bytes[i]));
    std::printf("%s", i % per_line == per_line - 1 || i == n - 1 ? "\n" : " ");
  }
}

int Tools::toString(float value, String& out) {
  if (value == 0.0F) {
    return out.copy("0");
  }
  const int e = cut(std::log10(std::fabs(static_cast<double>(value))) + 0.0001);
  if (e >= -5 && e <= 5 && std::isfinite(value)) {
    return out.copy(fixedText(value, 4 - e).c_str());
  }
  char text[40];
  std::snprintf(text, sizeof(text), "%e", static_cast<double>(value));
  return out.copy(text);
}

int Tools::toString(float value, int digits, String& out) {
  if (value == 0.0F) {
    return out.copy("0");
  }
  digits = std::clamp(digits, 0, 40);
  const int e = cut(std::ceil(std::log10(std::fabs(static_cast<double>(value))) + 0.0001));
  if (e >= -5 && e <= 5 && std::isfinite(value)) {
    return out.copy(fixedText(value, digits - e).c_str());
  }
  char text[80];
  std::snprintf(text, sizeof(text), "%.*e", std::max(digits - 1, 0), static_cast<double>(value));
  return out.copy(text);
}

int Tools::toString(float value, const char* format, String& out) {
  char text[200];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  std::snprintf(text, sizeof(text), numFormat(format), static_cast<double>(value));
#pragma GCC diagnostic pop
  return out.copy(text);
}

int Tools::toInt(float value) {
  if (value == 0.0F || !std::isfinite(value)) {
    return 0;
  }
  double v = std::fabs(static_cast<double>(value));
  int e = cut(std::log10(v) + 5) - 5;
  int m = 0;
  if (e < 0) {
    for (int i = e; i <= 1; i++) {
      v *= 10;
    }
    m = static_cast<int>(std::fmod(v, 100));
    e += 10;
  } else if (e == 0) {
    m = cut(v * 10) % 100;
  } else {
    for (int i = 1; i < e; i++) {
      v /= 10;
    }
    m = cut(v) % 100;
  }
  const int code = e * 100 + m;
  return value < 0 ? -code : code;
}

float Tools::calcInterval(float high, float low, int n) {
  const float x = (high - low) / static_cast<float>(std::max(n, 1));
  if (x >= 1) {
    return std::ceil(
        x);  // also from 10, 100 and 1000 up, without a step to round numbers: deliberate
  }
  for (const float step : {10.0F, 100.0F, 1000.0F, 10000.0F}) {
    if (static_cast<double>(x) >= 1.0 / static_cast<double>(step)) {
      return std::ceil(x * step) / step;
    }
  }
  return x == 0.0F ? 1.0F : x;
}

int Tools::cut(double value) {
  if (std::isnan(value)) {
    return 0;
  }
  constexpr double lowest = std::numeric_limits<int>::min();
  constexpr double highest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(value, lowest, highest));
}

const char* Tools::numFormat(const char* format) {
  static constexpr const char* plain = "%1.0f";
  int conversions = 0;
  for (const char* p = format; p != nullptr && *p != '\0'; p++) {
    if (*p != '%') {
      continue;
    }
    if (p[1] == '%') {
      p++;
      continue;
    }
    p++;
    while (*p != '\0' && std::char_traits<char>::find("-+ #0", 5, *p) != nullptr) {
      p++;
    }
    for (int digits = 0; isDigit(*p); p++) {
      if (++digits > 2) {
        return plain;
      }
    }
    if (*p == '.') {
      p++;
      for (int digits = 0; isDigit(*p); p++) {
        if (++digits > 2) {
          return plain;
        }
      }
    }
    if (*p == '\0' || std::char_traits<char>::find("fFeEgG", 6, *p) == nullptr) {
      return plain;
    }
    conversions++;
  }
  return conversions == 1 ? format : plain;
}

}  // namespace ZQV
