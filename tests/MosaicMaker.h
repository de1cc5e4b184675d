#pragma once

#include <initializer_list>
#include <string>

namespace ZQV {

inline std::string bytes(std::initializer_list<int> list) {
  std::string s;
  for (const int v : list) s += static_cast<char>(v);
  return s;
}

/** What a NOWrad file begins with. */
struct Nowrad {
  std::string size = "4 700";
  std::string label = "NOWrad Master       18:45 03-JUN-97";
  std::string projection = "C-1.745329 0.872665 0.0 0.00174533 0.00087266";

  [[nodiscard]] std::string head() const {
    std::string padded = label;
    padded.resize(80, ' ');
    return bytes({0, 0xf0, 9, 4}) + "abcd" + bytes({7, 0, 0xf0, 10}) + size + bytes({0, 0xf0, 3}) +
           padded + bytes({0, 0xf0, 11}) + projection;
  }
};

/** A line of a NOWrad file. */
inline std::string line(int number, const std::string& packets) {
  return bytes({0, 0xf0, 12, number & 255, number >> 8}) + packets;
}

/** A Kavouras file with a kind, a resolution and run data. */
inline std::string kavouras(char kind, int resolution, const std::string& runs,
                            const std::string& time = "184530070599") {
  std::string head(2048, '\0');
  head[1996 + 14] = kind;
  head.replace(1996 + 16, 12, time);
  head[1996 + 38] = static_cast<char>(resolution);
  return head + runs;
}

}  // namespace ZQV
