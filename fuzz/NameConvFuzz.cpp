// Name templates, the names decoded by them, and date texts of the search for the latest file.

#include "NameConv.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "Filename.h"
#include "NameConvFile.h"
#include "Zqv.h"

using namespace ZQV;

namespace {

/** The lines of the input, as C texts. */
std::vector<std::string> lines(const uint8_t* data, size_t size) {
  std::vector<std::string> list(1);
  for (size_t i = 0; i < size; i++) {
    if (data[i] == '\n' && list.size() < 4) {
      list.emplace_back();
    } else if (data[i] != 0) {
      list.back() += static_cast<char>(data[i]);
    }
  }
  list.resize(4);
  return list;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ::setenv("zqvcurtime", "#202105051705", 1);
  Zqv::putResrc("data_path", "/nonexistent:/dev");
  const std::vector<std::string> in = lines(data, size);
  NameConv conv;
  conv.set(("@" + in[0]).c_str());
  conv.setKey('i', "ABC");
  conv.setFixDate(in[2].c_str());
  conv.setLateLimit(20);
  conv.decode(in[1].c_str());
  NameConvFile found;
  conv.setFile(conv.getDate(), found);
  // A search of any length asked for would only be the same step again.
  const size_t limit = in[3].find('#', 1);
  conv.setLatest(in[3].substr(0, limit).c_str(), found);
  String out;
  conv.toPattern(out);
  Filename name;
  name.setNameConv(("@" + in[0]).c_str());
  name.setNumFiles(in[2].c_str());
  name.getName(1, out);
  return 0;
}
