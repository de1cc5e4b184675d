#include "ResrcCL.h"

#include <cctype>

#include "StrLib.h"
#include "String.h"

namespace ZQV {

namespace {

bool isLetter(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

/** "-" and a letter: what no value begins with. */
bool isSingleDashKey(const char* arg) {
  return arg != nullptr && arg[0] == '-' && isLetter(arg[1]);
}

bool isDoubleDashKey(const char* arg) {
  return arg != nullptr && arg[0] == '-' && arg[1] == '-' && isLetter(arg[2]);
}

}  // namespace

void ResrcCL::rewind() {
  pos = 0;
  ind = 1;
}

int ResrcCL::getKeyed(String& key, String& value) {
  key.clear();
  value.clear();
  const char* arg = strings.getString(ind);
  if (arg == nullptr) {
    return -1;
  }
  if (StrLib::equal(arg, "--")) {
    flag = 9;
    ind++;
    return 1;
  }
  if (!isSingleDashKey(arg) && !isDoubleDashKey(arg)) {
    return 0;
  }
  const char* name = arg + (isSingleDashKey(arg) ? 1 : 2);
  const int equals = StrLib::index(name, '=');
  if (equals >= 0) {
    key.copy(name, equals);
    value.copy(name + equals + 1);
    flag = 2;
    ind++;
    return 1;
  }
  key.copy(name);
  const char* next = strings.getString(ind + 1);
  if (next != nullptr && !isSingleDashKey(next)) {  // a "--word" is taken as a value: deliberate
    value.copy(next);
    flag = 5;
    ind += 2;
    return 1;
  }
  flag = 6;
  ind++;
  return 1;
}

int ResrcCL::getPosition(String& value) {
  value.clear();
  const char* arg = strings.getString(ind);
  if (arg == nullptr) {
    return -1;
  }
  value.copy(arg);
  ind++;
  return pos++;
}

int ResrcCL::compare(const char* key, const char* name, const char* short_key) {
  if (!StrLib::valid(key)) {
    return 0;
  }
  if (StrLib::equal(key, short_key)) {
    return 2;
  }
  return StrLib::equal(name, key, StrLib::length(key)) ? 1 : 0;
}

}  // namespace ZQV
