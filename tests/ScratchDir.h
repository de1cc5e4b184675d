#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "Zqv.h"

namespace ZQV {

/** A directory of a test's own, and the data path as long as it is there. */
class ScratchDir {
 public:
  ScratchDir() : old_path(Zqv::getDatabasePath()) {
    char name[] = "/tmp/zqv.XXXXXX";
    dir = ::mkdtemp(name) != nullptr ? name : "/nowhere";
    Zqv::setDatabasePath(dir.c_str());
  }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  ~ScratchDir() {
    Zqv::setDatabasePath(old_path.c_str());
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
  }

  [[nodiscard]] std::string path(const char* name) const { return dir + "/" + name; }
  /** Makes a file. @return its path */
  std::string write(const char* name, const std::string& text) const {
    std::ofstream(path(name), std::ios::binary) << text;
    return path(name);
  }
  [[nodiscard]] std::string read(const char* name) const {
    std::ostringstream text;
    text << std::ifstream(path(name), std::ios::binary).rdbuf();
    return text.str();
  }

 private:
  std::string old_path;
  std::string dir;
};

}  // namespace ZQV
