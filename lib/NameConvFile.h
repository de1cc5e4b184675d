#pragma once

#include <string>

#include "Const.h"
#include "Date.h"
#include "String.h"

namespace ZQV {

/** What a name convention found: names, date and what comes with them. */
struct NameConvFile {
  void init() { *this = NameConvFile(); }

  std::string type;          ///< data type of the convention
  String filename;           ///< resolved file
  String header;             ///< resolved header file, may be empty
  Date date;                 ///< date that the name stands for, as precise as the name is
  std::string param;         ///< parameters of the convention
  int offset = Const::MISS;  ///< seconds between files, Const::MISS if the names hold no time
};

}  // namespace ZQV
