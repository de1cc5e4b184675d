#include "DynLib.h"

#include <dlfcn.h>

namespace ZQV {

DynLib::~DynLib() {
  if (handle != nullptr) dlclose(handle);
}

int DynLib::open(const char* name) {
  if (handle == nullptr) handle = dlopen(name, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  return handle != nullptr ? 1 : 0;
}

void* DynLib::find(const char* name) {
  return handle != nullptr ? dlsym(handle, name) : nullptr;
}

}  // namespace ZQV
