#pragma once

#include <string>

#include "TempDir.h"
#include "Zqv.h"

namespace ZQV {

/** A directory of a test's own, and the data path as long as it is there. */
class ScratchDir : public TempDir {
 public:
  ScratchDir() : old_path(Zqv::getDatabasePath()) { Zqv::setDatabasePath(path.c_str()); }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  ~ScratchDir() { Zqv::setDatabasePath(old_path.c_str()); }

 private:
  std::string old_path;
};

/** The package's own data files as the data path. */
class PackageData {
 public:
  PackageData() : before(Zqv::getDatabasePath()) { Zqv::setDatabasePath(ZQV_DATA_DIR); }
  PackageData(const PackageData&) = delete;
  PackageData& operator=(const PackageData&) = delete;
  ~PackageData() { Zqv::setDatabasePath(before.c_str()); }

 private:
  std::string before;
};

}  // namespace ZQV
