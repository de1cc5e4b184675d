#pragma once

#include <array>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>

#include "TempDir.h"

/** What a run of the program left behind. */
struct ProgramRun {
  int status = -1;
  std::string out;
  std::string err;
};

/** Runs the built program with the package's own data and no settings of the user. */
inline ProgramRun runScopeview(const TempDir& dir, const std::string& args,
                               const std::string& env = "") {
  ProgramRun run;
  const std::string command = "cd '" + dir.path + "' && env zqvdefault=/nonexistent " + env + " '" +
                              ZQV_SCOPEVIEW "' -fp '" ZQV_DATA_DIR "' " + args + " 2> stderr.txt";
  std::FILE* pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) {
    return run;
  }
  std::array<char, 4096> part{};
  for (size_t n = 0; (n = std::fread(part.data(), 1, part.size(), pipe)) > 0;) {
    run.out.append(part.data(), n);
  }
  const int status = ::pclose(pipe);
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  run.err = dir.read("stderr.txt");
  return run;
}

/** One drawing record of a metafile, with the colours in force. */
struct Record {
  struct Place {
    double x, y;
  };
  char kind;  ///< 'F' fill, 'L' line
  int fill_color;
  int line_color;
  std::vector<Place> points;
  int line_style = 1;
};

/** One text of a metafile, by its upper left corner or whatever its alignment says. */
struct MetaText {
  Record::Place at;
  std::string text;
};

inline std::vector<MetaText> readTexts(const std::string& text) {
  std::vector<MetaText> list;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    Record::Place at{};
    int n = 0;
    if (std::sscanf(line.c_str(), "T %lf,%lf %n", &at.x, &at.y, &n) == 2) {
      list.push_back({at, line.substr(static_cast<size_t>(n))});
    }
  }
  return list;
}

/** The drawing records of a metafile. */
inline std::vector<Record> readMeta(const std::string& text) {
  std::vector<Record> records;
  std::istringstream lines(text);
  std::string line;
  int fill_color = -1;
  int line_color = -1;
  int line_style = 1;
  while (std::getline(lines, line)) {
    std::istringstream words(line);
    std::string word;
    words >> word;
    if (word == "FCLR") {
      words >> fill_color;
    } else if (word == "LCLR") {
      words >> line_color;
    } else if (word == "LSTY") {
      words >> line_style;
    } else if (word == "F" || word == "L") {
      Record record{word[0], fill_color, line_color, {}, line_style};
      int n = 0;
      words >> n;
      char comma = 0;
      Record::Place p{};
      while (words >> p.x >> comma >> p.y) {
        record.points.push_back(p);
      }
      if (static_cast<int>(record.points.size()) == n) {
        records.push_back(record);
      }
    }
  }
  return records;
}
