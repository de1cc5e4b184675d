#pragma once

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Run.h"

namespace ZQV {

constexpr double rad = 3.14159265358979 / 180;

/** Colours of the package's own table as a metafile has them. */
inline std::map<std::string, int> radarColors() {
  std::map<std::string, int> map;
  std::ifstream file(ZQV_DATA_DIR "/rad.clr");
  std::string line;
  while (std::getline(file, line)) {
    std::istringstream words(line);
    std::string name;
    std::string first;
    words >> name >> first;
    if (name.empty() || name[0] == '#') {
      continue;
    }
    if (!first.empty() && first[0] == '#') {
      map[name] = std::stoi(first.substr(1), nullptr, 16);
    } else if (!first.empty()) {
      double g = 0;
      double b = 0;
      words >> g >> b;
      const auto channel = [](double v) { return static_cast<int>(v * 255); };
      map[name] = channel(std::stod(first)) << 16 | channel(g) << 8 | channel(b);
    }
  }
  return map;
}

/** The fills of the data: those of the colour bar lie below the picture. */
inline std::vector<Record> dataFills(const std::vector<Record>& records, double bottom) {
  std::vector<Record> list;
  for (const Record& r : records) {
    if (r.kind == 'F' && std::any_of(r.points.begin(), r.points.end(), [&](const Record::Place& p) {
          return p.y >= bottom - 1e-6;
        })) {
      list.push_back(r);
    }
  }
  return list;
}

/** How many lines of two points go from a to b, of one colour only if it isn't negative. */
inline int countLines(const std::vector<Record>& records, const Record::Place& a,
                      const Record::Place& b, int color = -1, int style = 1) {
  return static_cast<int>(std::count_if(records.begin(), records.end(), [&](const Record& r) {
    return r.kind == 'L' && r.points.size() == 2 && r.line_style == style &&
           (color < 0 || r.line_color == color) &&
           std::hypot(r.points[0].x - a.x, r.points[0].y - a.y) < 1e-5 &&
           std::hypot(r.points[1].x - b.x, r.points[1].y - b.y) < 1e-5;
  }));
}

/** How many strokes of a length lie with their middle at a place. */
inline int countStrokes(const std::vector<Record>& records, const Record::Place& middle,
                        double length) {
  return static_cast<int>(std::count_if(records.begin(), records.end(), [&](const Record& r) {
    if (r.kind != 'L' || r.points.size() != 2) return false;
    const Record::Place& a = r.points[0];
    const Record::Place& b = r.points[1];
    return std::hypot((a.x + b.x) / 2 - middle.x, (a.y + b.y) / 2 - middle.y) < 1e-5 &&
           std::fabs(std::hypot(a.x - b.x, a.y - b.y) - length) < 1e-5;
  }));
}

inline void expectPlaces(const Record& record, const std::vector<Record::Place>& expected,
                         double tolerance, const std::string& what) {
  ASSERT_EQ(record.points.size(), expected.size()) << what;
  for (size_t i = 0; i < expected.size(); i++) {
    EXPECT_NEAR(record.points[i].x, expected[i].x, tolerance) << what << " x of corner " << i;
    EXPECT_NEAR(record.points[i].y, expected[i].y, tolerance) << what << " y of corner " << i;
  }
}

}  // namespace ZQV
