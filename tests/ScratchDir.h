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

}  // namespace ZQV
