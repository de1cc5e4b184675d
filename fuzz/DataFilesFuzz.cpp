#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "CityData.h"
#include "CityFile.h"
#include "CityHash.h"
#include "CityTool.h"
#include "DomainTool.h"
#include "DomainVal.h"
#include "Region.h"
#include "String.h"
#include "Unit.h"
#include "VarList.h"
#include "Zqv.h"

// The small text files of the data path: stations, regions, units, variables. Each input is read as
// all of them.

namespace {

std::string dir;

void write(const char* name, const uint8_t* data, size_t size) {
  std::ofstream(dir + "/" + name, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  ::setenv("zqverrtoout", "1", 1);
  if (std::freopen("/dev/null", "w", stdout) == nullptr) {
    return 1;
  }
  std::string pattern = "/dev/shm/zqvfuzzXXXXXX";
  const char* made = ::mkdtemp(pattern.data());
  if (made == nullptr) {
    return 1;
  }
  dir = made;
  std::atexit([] { std::filesystem::remove_all(dir); });
  ZQV::Zqv::setDatabasePath(dir.c_str());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  for (const char* name : {"sao.cty", "zqv.reg", "units.lup", "a.var"}) {
    write(name, data, size);
  }
  ZQV::CityData city;
  ZQV::CityTool::search("sao.cty", "DEN", city);
  const ZQV::CityHash hash("sao.cty");
  ZQV::CityHashData found;
  hash.get("72469", found);
  ZQV::DomainVal val;
  ZQV::DomainTool::decode(val, "us");
  ZQV::DomainTool::decode(val, "fi:zqv.reg");
  ZQV::Unit unit;
  unit.convert(1, "m", "km");
  unit.convert(1, "10^2 C", "-F");
  ZQV::VarList vars;
  vars.readFile("a.var");
  vars.decode("cid,vil:un=in");
  ZQV::String label;
  vars.getSpec(1).toInfoLabel(label);
  return 0;
}
