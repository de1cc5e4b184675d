// Resource files: directives, patterns, quotes, and the keys that come out of them.

#include "ResrcFile.h"

#include <cstdint>
#include <cstdio>
#include <string>

#include <unistd.h>

#include "Prog.h"
#include "String.h"
#include "Zqv.h"

using namespace ZQV;

namespace {

const std::string& fileName() {
  static const std::string name = "/tmp/zqv_resrc_fuzz." + std::to_string(::getpid());
  return name;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::FILE* out = std::fopen(fileName().c_str(), "wb");
  if (out == nullptr) {
    return 0;
  }
  std::fwrite(data, 1, size, out);
  std::fclose(out);
  ResrcFile file;
  file.set("scopeview", "+x");
  file.setTag("night");
  String key;
  String value;
  if (file.open(fileName().c_str()) != 0) {
    while (file.get(key, value) == 1) {
      static_cast<void>(file.compare("color_table", key.get()));
      static_cast<void>(file.valid(key.get()));
      ResrcFile::parseName(key.get(), value);
    }
    file.close();
  }
  const std::string line(reinterpret_cast<const char*>(data), size);
  if (line.find("exit") == std::string::npos && line.find("set") == 0 && line.size() > 4) {
    Zqv::resrc.clear();
    Prog::setCommand(("set x" + line.substr(4)).c_str());
  }
  return 0;
}
