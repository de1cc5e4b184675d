#include "Filename.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <glob.h>

#include "FileTool.h"
#include "NameConvFile.h"
#include "Prog.h"
#include "StrLib.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int seconds_an_hour = 3600;
constexpr int seconds_a_minute = 60;
constexpr int max_files = 10000;

/** "H[:M]" or ":M" in seconds, the sign passed over. */
long readSpan(const char* text) {
  if (*text == '-') {
    text++;
  }
  int hours = 0;
  int minutes = 0;
  if (*text == ':') {
    std::sscanf(text, ":%6d", &minutes);
  } else {
    std::sscanf(text, "%6d:%6d", &hours, &minutes);
  }
  return static_cast<long>(hours) * seconds_an_hour + static_cast<long>(minutes) * seconds_a_minute;
}

}  // namespace

int Filename::setNameConv(const char* conv_name) {
  const int done = conv.set(conv_name);
  file_off = conv.getOffset();
  type = conv.getType();
  return done;
}

bool Filename::exist() const {
  return FileTool::exist(name.get());
}

void Filename::setBaseDate(const Date& at) {
  base_date = at;
  base_date.fix();
}

void Filename::take(const NameConvFile& found) {
  name.copy(found.filename.get());
  hdr.copy(found.header.get());
  param = found.param;
  date = found.date;
  is_set = true;
}

int Filename::takeLatest(const char* text) {
  NameConvFile found;
  conv.setLatest(text, found);
  take(found);
  setBaseDate(date);
  fixed = false;
  return 1;
}

void Filename::takeLiteral(const char* text) {
  name.copy(text);
  hdr.clear();
  date.init();
  is_set = true;
  fixed = true;
}

int Filename::set(const char* conv_name, const char* text) {
  if (!StrLib::valid(conv_name)) {
    takeLiteral(text != nullptr ? text : "");
    return exist() ? 1 : 0;
  }
  setNameConv(conv_name);
  takeLatest(text);
  return exist() ? 1 : 0;
}

int Filename::set(const char* conv_name, const Date& at) {
  NameConvFile found;
  setNameConv(conv_name);
  conv.setFile(at, found);
  take(found);
  setBaseDate(date);
  fixed = false;
  return 1;
}

int Filename::set(const char* literal) {
  takeLiteral(literal != nullptr ? literal : "");
  return exist() ? 1 : 0;
}

int Filename::setDate(const Date& at) {
  if (!at.isSet()) {
    return 0;
  }
  if (!fixed) {
    NameConvFile found;
    conv.setFile(at, found);
    take(found);
  }
  return exist() ? 1 : 0;
}

int Filename::setDate(const Date& at, const char* /*qualifier*/) {
  if (!fixed) {
    if (!at.isSet()) {
      return 0;
    }
    conv.setLateDate(at);
    conv.setLateLimit(1);
    NameConvFile found;
    conv.setLatest("la", found);
    take(found);
  }
  return exist() ? 1 : 0;
}

int Filename::checkFile(const char* text) {
  if (StrLib::equal(text, "exit")) {
    Zqv::exit(Zqv::NOERR);
  }
  if (text == nullptr) {
    text = "";
  }
  if (*text == '@') {
    takeLiteral(text + 1);
    return 1;
  }
  if (FileTool::isStdio(text)) {
    takeLiteral("-");
    return 1;
  }
  if (!conv.hasFile()) {
    takeLiteral(text);
    return 1;
  }
  if (*text == '#') {
    takeLatest(text);
    date.set(text);
    setBaseDate(date);
    return 1;
  }
  if (StrLib::iequal(text, "cu=", 3)) {
    return takeLatest(text + 3);
  }
  if (StrLib::iequal(text, "cu")) {
    return takeLatest("");
  }
  if (StrLib::iequal(text, "la", 2)) {
    return takeLatest(text);
  }
  const bool both_full = FileTool::isFullPath(conv.getFile()) && FileTool::isFullPath(text);
  if (both_full || conv.decode(text) == 0) {
    takeLiteral(text);
    return 1;
  }
  NameConvFile found;
  const Date read = conv.getDate();
  conv.setFile(read, found);
  take(found);
  date = read;
  setBaseDate(date);
  fixed = conv.getOffset() == Const::MISS;
  return 1;
}

void Filename::splitResource(const char* text) {
  files.set(text, StrLib::index(text, '\n') > 0 ? '\n' : ',');
  if (files.getNum() > 1) {
    num_file = files.getNum();
    num_type = FILE_LIST;
  }
}

int Filename::setFile(const char* text) {
  if (StrLib::valid(text)) {
    files.set(text, ',');
    checkFile(files.getString(0));
    if (files.equal(1, "nh=", 3)) {
      setNumFiles(files.getString(1, 3));
    } else if (files.getNum() > 1) {
      num_file = files.getNum();
      num_type = FILE_LIST;
    }
    return 1;
  }
  const char* listed = Zqv::getResrc("filename");
  if (listed != nullptr) {
    files.set(listed, StrLib::index(listed, '\n') > 0 ? '\n' : ',');
    checkFile(files.getString(0));
    if (files.equal(1, "nh=", 3)) {
      setNumFiles(files.getString(1, 3));
    }
    splitResource(listed);  // a second token of "nh=" doesn't keep the texts from being a list
    return 1;
  }
  return takeLatest(Zqv::getResrc("current", "la"));
}

int Filename::setFile(int i) {
  if (i < 0 || i >= num_file || (fixed && num_type != FILE_LIST && i > 0)) {
    return 0;
  }
  if (num_type == FILE_LIST) {
    if (i >= files.getNum()) {
      return 0;
    }
    name.copy(files.getString(i));
    return 1;
  }
  if (fixed) {
    return 1;
  }
  const long steps = num_dir < 0 ? static_cast<long>(i) - num_file + 1 : i;
  Date at = base_date;
  if (file_off != Const::MISS) {
    at.addSeconds(static_cast<float>(steps * file_off));
  }
  NameConvFile found;
  conv.setFile(at, found);
  take(found);
  return 1;
}

int Filename::getName(int i, String& out) const {
  Filename other = *this;
  const int done = other.setFile(i);
  out.copy(done != 0 ? other.getName() : "");
  return done;
}

int Filename::setFilePrompt(const char* prompt) {
  constexpr int max_tries = 4;
  const char* listed = Zqv::getResrc("filename");
  const char* current = Zqv::getResrc("current");
  if (listed == nullptr) {
    if (current == nullptr && Zqv::getResrc("inter") != nullptr) {
      Zqv::print("List of available files:\n");
      listFile();
      Zqv::print("\n");
      for (int i = 0; i < max_tries; i++) {
        String answer;
        if (Prog::prompt(prompt, answer) == 0) {
          return 0;
        }
        if (answer.equal("list")) {
          listFile();
          continue;
        }
        checkFile(answer.get());
        if (exist()) {
          return 1;
        }
        std::printf("File not found: %s\n", answer.get());
      }
      return 0;
    }
    takeLatest(current != nullptr ? current : "la");
    return exist() ? 1 : 0;
  }
  if (StrLib::equal(listed, "list")) {
    listFile();
    Zqv::exit(Zqv::NOERR);
  }
  splitResource(listed);
  const char* first = StrLib::valid(files.getString(0), "");
  if (current != nullptr) {
    setNameConv(first);
    takeLatest(current);
  } else {
    name.copy(first);
    checkFile(first);
  }
  return exist() ? 1 : 0;
}

int Filename::listFile() {
  String pattern;
  conv.toPattern(pattern);
  constexpr int level = 13;
  Zqv::outMessage(level, "SEARCH: %s\n", (std::string("ls -x ") + pattern.get()).c_str());
  glob_t found{};
  if (pattern.valid() && ::glob(pattern.get(), GLOB_TILDE, nullptr, &found) == 0) {
    for (size_t i = 0; i < found.gl_pathc; i++) {
      std::printf("%s\n", found.gl_pathv[i]);
    }
  }
  ::globfree(&found);
  return 1;
}

int Filename::setNumFiles(int n) {
  num_dir = n < 0 ? -1 : 1;
  num_file =
      static_cast<int>(std::min(std::labs(static_cast<long>(n)), static_cast<long>(max_files)));
  return 1;
}

int Filename::setNumFiles(const char* text) {
  if (text == nullptr) {
    return 0;
  }
  const Strings parts(text, ',');
  const char* first = StrLib::valid(parts.getString(0), "");
  const long span = readSpan(first);
  const long distance = parts.valid(1) ? readSpan(parts.getString(1)) : conv.getOffset();
  num_dir = *first == '-' ? -1 : 1;
  long num = 1;
  if (distance == 0) {
    num = span / seconds_an_hour + 1;
  } else if (distance != Const::MISS) {
    num = span / distance + 1;
  }
  num_file = static_cast<int>(std::clamp(num, 1L, static_cast<long>(max_files)));
  file_off = Tools::cut(static_cast<double>(distance));
  Zqv::outDebug(5, "Set NumFiles: %d %d = %d\n", Tools::cut(static_cast<double>(span)), file_off,
                num_file);
  return 1;
}

int Filename::addOutPath(const char* paths) {
  String moved;
  const int done = FileTool::addOutPath(paths, name.get(), moved);
  name.copy(moved.get());
  if (hdr.valid()) {
    FileTool::addOutPath(paths, hdr.get(), moved);
    hdr.copy(moved.get());
  }
  return done;
}

int Filename::getDate(Date& out) const {
  out = date;
  return date.isSet() ? 1 : 0;
}

void Filename::print() const {
  std::printf("Name: %s\nHeader: %s\nType: %s\nParam: %s\nFixed: %d\nFiles: %d\nOffset: %d\nDate: ",
              name.get(), hdr.get(), type.c_str(), param.c_str(), fixed ? 1 : 0, num_file,
              file_off);
  date.print();
}

}  // namespace ZQV
