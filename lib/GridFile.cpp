#include "GridFile.h"

#include "GridSpec.h"
#include "StrLib.h"
#include "Zqv.h"

namespace ZQV {

int GridFile::open(const char* file_name) {
  name = StrLib::acopy(file_name);
  return name.empty() ? 0 : 1;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): reading will need the file
int GridFile::readHdr(Grid& /*grid*/) const {
  return 0;
}

int GridFile::read(const GridSpec& spec, Grid& /*grid*/) const {
  Zqv::outWarning("GridFile: Unable to read grid file: %s %s\n", name.c_str(), spec.getName());
  return 0;
}

}  // namespace ZQV
