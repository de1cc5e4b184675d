#include "XLib.h"

#include "DynLib.h"

namespace ZQV {

namespace {

struct LoadedXLib {
  LoadedXLib() {
    if (library.open("libX11.so.6") == 0) return;
    complete = true;
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage)
#define ZQV_XLIB_FIND(name) complete = library.find(#name, functions.name) != 0 && complete;
    ZQV_XLIB_FUNCTIONS(ZQV_XLIB_FIND)
#undef ZQV_XLIB_FIND
  }

  DynLib library;
  XLib functions;
  bool complete = false;
};

}  // namespace

const XLib* XLib::get() {
  static const LoadedXLib loaded;
  return loaded.complete ? &loaded.functions : nullptr;
}

}  // namespace ZQV
