#include "ResrcFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "FileTool.h"
#include "Resrc.h"
#include "StrLib.h"
#include "String.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int line_size = 250;  // longest line and value, terminator included
constexpr char branch_taken = 99;
constexpr int max_lines = 1000000;  // a device that never ends isn't a resource file
constexpr size_t max_name = 29;
constexpr size_t max_tag = 19;

/** Where the last "." or "*" of a pattern stands, npos if it has none. */
size_t lastQualifier(const std::string& pattern) {
  return pattern.find_last_of(".*");
}

}  // namespace

int ResrcFile::set(const Resrc& store) {
  return set(store.get("prog"), store.get("name"));
}

int ResrcFile::set(const char* prog_name, const char* alias) {
  num_tag = 0;
  match.clear();
  matches = true;
  prog = StrLib::acopy(prog_name).substr(0, max_name);
  name = StrLib::acopy(alias).substr(0, max_name);
  return 1;
}

int ResrcFile::setTag(const char* text) {
  if (num_tag >= max_tags) {
    return 0;
  }
  if (num_tag >= 0) {
    tag[static_cast<size_t>(num_tag)] = StrLib::acopy(text).substr(0, max_tag);
  }
  num_tag++;
  return 1;
}

bool ResrcFile::hasTag(const char* text) const {
  for (int i = 0; i < num_tag; i++) {
    if (StrLib::iequal(text, tag[static_cast<size_t>(i)].c_str())) {
      return true;
    }
  }
  return false;
}

/** Removes a tag, or the last one if it isn't there. Without tags the count goes on falling below
 * zero, and as many DEF lines then have no effect: deliberate. */
void ResrcFile::undefine(const char* text) {
  const auto end = tag.begin() + std::max(num_tag, 0);
  const auto found = std::find_if(
      tag.begin(), end, [text](const std::string& t) { return StrLib::iequal(text, t.c_str()); });
  if (found != end) {
    std::move(found + 1, end, found);
  }
  constexpr int lowest = -1000000;
  num_tag = std::max(num_tag - 1, lowest);
}

int ResrcFile::open(const char* path) {
  num_line = 0;
  if (!StrLib::valid(path)) {
    return File::open("zqv.cfg", "r");
  }
  if (!FileTool::isDir(path)) {
    return File::open(path, "r");
  }
  String file;
  for (const char* candidate : {"zqv.cfg", ".zqvdef", "Zqv.res"}) {
    file.copy(path);
    FileTool::addPathDelim(file);
    file.append(candidate);
    if (FileTool::exist(file.get())) {
      break;
    }
  }
  return File::open(file.get(), "r");
}

void ResrcFile::updateMatches() {
  matches = std::all_of(match.begin(), match.end(), [](char cell) { return cell == 1; });
}

/** Carries out a directive. @return 1 if the line goes on as a resource line, 0 if it is done with,
 * -1 if the word is no directive */
int ResrcFile::directive(const char* word, const char* text, int words) {
  if (StrLib::iequal(word, "DEF")) {
    setTag(text);
    return 1;
  }
  if (StrLib::iequal(word, "UNDEF")) {
    undefine(text);
    return 1;
  }
  if (StrLib::iequal(word, "IF")) {
    if (words >= 2) {
      match.push_back(StrLib::iequal(text, "V6") || hasTag(text) ? 1 : 0);
      updateMatches();
    }
    return 0;
  }
  if (StrLib::iequal(word, "ELSE")) {
    if (match.empty()) {
      Zqv::outWarning("ResrcFile::get: else without an if\n");
      return 0;
    }
    match.back() = match.back() == 0 ? char{1} : branch_taken;
    updateMatches();
    return 0;
  }
  if (StrLib::iequal(word, "ELIF")) {
    if (words < 2) {
      return 0;
    }
    if (match.empty()) {
      Zqv::outWarning("ResrcFile::get: elif without an if\n");
      return 0;
    }
    // "V6" is not considered here: only IF knows it.
    const char found = hasTag(text) ? 1 : 0;
    match.back() = match.back() == 0 ? found : branch_taken;
    updateMatches();
    return 0;
  }
  if (StrLib::iequal(word, "END")) {
    if (match.empty()) {
      Zqv::outWarning("ResrcFile::get: end without an if\n");
      return 0;
    }
    match.pop_back();
    updateMatches();
    return 0;
  }
  return -1;
}

int ResrcFile::get(String& key, String& value) {
  key.clear();
  value.clear();
  char line[line_size];
  while (num_line < max_lines && getLine(line, line_size) > 0) {
    num_line++;
    if (line[0] == '#') {
      continue;
    }
    char word[50];
    char text[line_size] = "";
    int at = 0;
    if (std::sscanf(line, "%49s %n", word, &at) < 1) {
      continue;
    }
    const int words = at > 0 && std::sscanf(line + at, "%249s", text) == 1 ? 2 : 1;
    const int done = directive(word, text, words);
    if (done == 0 || words < 2 || !matches) {
      continue;
    }
    key.copy(word);
    key.lowCase();
    if (key.getChar(-1) == ':') {
      key.chop();
    }
    if (text[0] == '"') {
      const char* quoted = line + at + 1;
      value.copy(quoted, static_cast<int>(std::strcspn(quoted, "\"")));
    } else {
      value.copy(text);
    }
    return 1;
  }
  return -1;
}

int ResrcFile::getValid(String& key, String& value) {
  while (get(key, value) == 1) {
    if (valid(key.get())) {
      String item;
      parseName(key.get(), item);
      key.copy(item.get());
      return 1;
    }
  }
  return -1;
}

bool ResrcFile::compare(const char* item, const char* pattern) const {
  if (item == nullptr || pattern == nullptr) {
    return false;
  }
  std::string target;
  if (!name.empty() && name[0] == '+') {
    target = prog + "." + name.substr(1) + ".";
  } else {
    target = (name.empty() ? prog : name) + ".";
  }
  target += item;
  const std::string wanted = pattern;
  size_t t = 0;
  size_t p = 0;
  while (t < target.size() && p < wanted.size()) {
    if (wanted[p] == '*') {
      p++;
      const std::string part = wanted.substr(p, wanted.find('*', p) - p);
      t = target.find(part, t);
      if (t == std::string::npos) {
        return false;
      }
    }
    if (p >= wanted.size() || t >= target.size() || wanted[p] != target[t]) {
      return false;
    }
    p++;
    t++;
  }
  return t == target.size() && p == wanted.size();
}

bool ResrcFile::valid(const char* pattern) const {
  String item;
  parseName(pattern, item);
  item.trunc(static_cast<int>(max_name));
  return compare(item.get(), pattern);
}

int ResrcFile::parseName(const char* pattern, String& name) {
  const std::string text = StrLib::acopy(pattern);
  const size_t at = lastQualifier(text);
  const size_t from = at == std::string::npos ? 1 : at + 1;
  return name.copy(from < text.size() ? text.substr(from).c_str() : "");
}

}  // namespace ZQV
