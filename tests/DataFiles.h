#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "Zqv.h"

/** A directory of its own as the data path, for tests that need small data files; all is put back
 * and removed at the end. */
class DataFiles {
 public:
  DataFiles() : before(ZQV::Zqv::getDatabasePath()) {
    std::string pattern = (std::filesystem::temp_directory_path() / "zqvXXXXXX").string();
    dir = ::mkdtemp(pattern.data());
    ZQV::Zqv::setDatabasePath(dir.c_str());
  }
  ~DataFiles() {
    ZQV::Zqv::setDatabasePath(before.c_str());
    std::filesystem::remove_all(dir);
  }
  DataFiles(const DataFiles&) = delete;
  DataFiles& operator=(const DataFiles&) = delete;

  void write(const std::string& name, const std::string& text) const {
    std::ofstream(path(name), std::ios::binary) << text;
  }
  [[nodiscard]] std::string path(const std::string& name) const { return dir + "/" + name; }

 private:
  std::string before;
  std::string dir;
};

/** The package's own data files as the data path. */
class PackageData {
 public:
  PackageData() : before(ZQV::Zqv::getDatabasePath()) { ZQV::Zqv::setDatabasePath(ZQV_DATA_DIR); }
  ~PackageData() { ZQV::Zqv::setDatabasePath(before.c_str()); }
  PackageData(const PackageData&) = delete;
  PackageData& operator=(const PackageData&) = delete;

 private:
  std::string before;
};
