#include "Region.h"

#include <cstdio>

#include "File.h"
#include "FileTool.h"
#include "StrLib.h"
#include "String.h"
#include "Zqv.h"

namespace ZQV {

int Region::get(const char* file, const char* name, String& out) {
  String path;
  FileTool::addPath(Zqv::getDatabasePath(), file == nullptr ? "zqv.reg" : file, path);
  out.clear();
  File in;
  // A plain file only: the name may come out of a data file's domain text.
  if (in.openPlain(path.get()) == 0) {
    Zqv::outWarning("Unable to open region file: %s\n", path.get());
    return 0;
  }
  char line[512];
  for (int length = in.getLine(line, sizeof(line)); length > 0;
       length = in.getLine(line, sizeof(line))) {
    if (line[length - 1] != '\n' && !in.endFile()) {
      in.skipLine();
    }
    char first[80] = "";
    char text[80] = "";
    const int n = line[0] == '#' ? 0 : std::sscanf(line, "%79s %*s %*d %79s", first, text);
    if (n == 1) {  // a bare domain text, whatever was asked for
      out.copy(first);
      return 1;
    }
    if (n == 2 && (name == nullptr || StrLib::iequal(name, first))) {
      out.copy(text);
      return 1;
    }
  }
  return 0;
}

}  // namespace ZQV
