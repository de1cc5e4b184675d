#include "ResrcEnv.h"

#include <cstdlib>
#include <string>

#include "Resrc.h"
#include "StrLib.h"
#include "String.h"

namespace ZQV {

int ResrcEnv::get(const Resrc& store, const char* name, const char* env, String& value) {
  value.clear();
  if (name == nullptr) {
    return 0;
  }
  const std::string prog = store.get("prog", "");
  const std::string own = store.get("name", "");
  std::string full = "zqv_";
  if (!own.empty() && own[0] == '+') {
    full += prog + "_" + own.substr(1) + "_" + name;
  } else {
    full += (own.empty() ? prog : own) + "_" + name;
  }
  const char* found = std::getenv(full.c_str());
  if (found == nullptr && StrLib::valid(env)) {
    found = std::getenv(env);
  }
  if (found == nullptr) {
    found = std::getenv((std::string("zqv") + name).c_str());
  }
  return found == nullptr ? 0 : value.copy(found);
}

}  // namespace ZQV
