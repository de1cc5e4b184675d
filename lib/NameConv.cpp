#include "NameConv.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "DateTool.h"
#include "File.h"
#include "FileTool.h"
#include "NameConvFile.h"
#include "StrLib.h"
#include "Strings.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int seconds_a_day = 86400;
constexpr int seconds_an_hour = 3600;
constexpr int seconds_a_minute = 60;
constexpr int default_limit = 500;
constexpr int max_steps = 50000;    // what a date text can ask a search to look at
constexpr int max_window = 600000;  // and a convention: over a year of minutes
constexpr size_t max_key = 19;
constexpr size_t max_ext = 29;
constexpr size_t max_type = 19;
constexpr size_t max_param = 49;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isLetter(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

bool missing(int v) {
  return v == Const::MISS;
}

/** One item of a template. */
struct Item {
  enum Kind { LITERAL, TOKEN, NAMED_PATH };
  Kind kind = LITERAL;
  char letter = 0;   ///< the character, or the token's letter
  int number = 0;    ///< number ahead of the letter, 0 if absent
  std::string name;  ///< of a %{name}
};

/** Takes the item at p and steps over it; braces outside tokens are passed over. @return false at
 * the end */
bool nextItem(const char*& p, Item& item) {
  while (*p == '{' || *p == '}') {
    p++;
  }
  if (*p == '\0') {
    return false;
  }
  item = Item();
  if (*p != '%') {
    item.letter = *p == ' ' ? '_' : *p;
    p++;
    return true;
  }
  p++;
  if (*p == '{') {
    const char* close = std::strchr(p, '}');
    const char* end = close != nullptr ? close : p + std::strlen(p);
    item.kind = Item::NAMED_PATH;
    item.name.assign(p + 1, end);
    if (item.name.empty()) {
      item.name = ".";  // no resource: the directory at hand
    }
    p = close != nullptr ? close + 1 : end;
    return true;
  }
  constexpr int max_number = 100000;
  for (; isDigit(*p); p++) {
    item.number = std::min(item.number * 10 + (*p - '0'), max_number);
  }
  if (*p == '\0') {
    return false;
  }
  item.kind = isLetter(*p) ? Item::TOKEN : Item::LITERAL;
  item.letter = *p++;
  return true;
}

/** Rounds a field down to a multiple of the token's number. */
int rounded(int v, int step) {
  return step > 1 ? v / step * step : v;
}

/** A number with zeros ahead, to the width that the first character of a text gives. */
std::string digits(const char* width, int v) {
  const auto wide = static_cast<size_t>(*width - '0');
  std::string text = std::to_string(std::abs(v));
  text.insert(0, text.size() < wide ? wide - text.size() : 0, '0');
  return v < 0 ? "-" + text : text;
}

bool isDateToken(char c) {
  return std::strchr("YymBbdjhn", c) != nullptr;
}

/** Reads n digits. @return false if they aren't there */
bool readDigits(const char*& p, int n, int& v) {
  if (!StrLib::isNum(p, n)) {
    return false;
  }
  v = std::atoi(std::string(p, static_cast<size_t>(n)).c_str());
  p += n;
  return true;
}

/** Reads "YYYYMMDDHHNN" as far as digits stand there. */
DateVal readStamp(const char*& p) {
  int y = Const::MISS;
  int m = Const::MISS;
  int d = Const::MISS;
  int h = Const::MISS;
  int n = Const::MISS;
  if (readDigits(p, 4, y) && readDigits(p, 2, m) && readDigits(p, 2, d) && readDigits(p, 2, h)) {
    readDigits(p, 2, n);
  }
  return {y, m, d, h, n, Const::FMISS};
}

/** Reads an offset, days, hours and minutes or hours and minutes, in seconds. */
long readOffset(const char*& p) {
  int days = 0;
  int hours = 0;
  int minutes = 0;
  int at = 0;
  int end = 0;
  if (StrLib::contains(p, "d")) {
    if (std::sscanf(p, "%6dd%n", &days, &end) == 1 && end > 0) {
      p += end;
    } else {
      days = 0;
    }
  }
  if (isDigit(*p) && std::sscanf(p, "%6d%n", &hours, &at) == 1) {
    p += at;
  } else {
    hours = 0;
  }
  end = 0;
  if (std::sscanf(p, ":%6d%n", &minutes, &end) == 1 && end > 0) {
    p += end;
  } else {
    minutes = 0;
  }
  return static_cast<long>(days) * seconds_a_day + static_cast<long>(hours) * seconds_an_hour +
         static_cast<long>(minutes) * seconds_a_minute;
}

/** Moves a date by seconds; missing fields stay missing. */
void move(Date& date, long seconds) {
  date.addMinutes(static_cast<int>(seconds / seconds_a_minute));
}

/** A sign, if one stands there. @return 0 if none does */
int readSign(const char*& p) {
  if (*p == '+' || *p == '-') {
    return *p++ == '+' ? 1 : -1;
  }
  return 0;
}

bool beginsOffset(const char* p) {
  return isDigit(*p) || (*p == ':' && isDigit(p[1]));
}

/** Which resource a path token takes its directories from, absent for other tokens. */
const char* pathResource(char token) {
  switch (token) {
    case 'C': return "con_path";
    case 'D': return "data_path";
    case 'F': return "file_path";
    case 'R': return "raw_path";
    case 'G': return "grid_path";
    case 'I': return "image_path";
    case 'W': return "watch_path";
    case 'T': return "text_path";
    case 'M': return "model_path";
    case 'S': return "sat_path";
    default: return nullptr;
  }
}

/** Protects what glob(3) would take for a pattern. */
std::string literalPattern(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (std::strchr("*?[]\\", c) != nullptr) {
      out += '\\';
    }
    out += c;
  }
  return out;
}

}  // namespace

void NameConv::initParam() {
  path.clear();
  limit = default_limit;
  output = false;
}

void NameConv::init() {
  file.clear();
  hdr.clear();
  key.clear();
  type.clear();
  param.clear();
  ext.clear();
  min_size = 0;
  min_time = Const::MISS;
  off = Const::MISS;
  cpath = 0;
  npath = 1;
}

bool NameConv::hasFile() const {
  return !file.empty() && !StrLib::iequal(file.c_str(), "none");
}

void NameConv::takeType(const char* text) {
  std::string taken = text;
  if (isDigit(*text)) {
    char word[32] = "";
    std::sscanf(text, "%9d,%31s", &min_size, word);
    taken = word;
  }
  type = taken.substr(0, max_type);
}

void NameConv::takeParams(const Strings& tokens, int first) {
  constexpr int value = 4;
  for (int i = first; i < tokens.getNum(); i++) {
    if (tokens.iequal(i, "min=", 4)) {
      min_time = tokens.getInt(i, value);
    } else if (tokens.iequal(i, "size=", 5)) {
      // The number is looked for one character early, at the "=", so that the size becomes missing
      // and any name passes the test: deliberate.
      min_size = tokens.getInt(i, value);
    }
  }
}

bool NameConv::takeLine(const char* line, const std::string& name) {
  char label[24];
  char name_form[84];
  char hdr_form[84] = "-";
  char type_form[34] = "";
  char params[54] = "";
  if (std::sscanf(line, "%20s %80s %80s %30s %50s", label, name_form, hdr_form, type_form, params) <
      2) {
    return false;
  }
  if (StrLib::iequal(label, name.c_str())) {
    Zqv::outDebug(5, "File name match for: %s\n", name.c_str());
  } else if (StrLib::iequal(name.c_str(), label, StrLib::length(label))) {
    const size_t bar = name.rfind('_');
    ext = bar == std::string::npos ? "" : name.substr(bar + 1, max_ext);
    Zqv::outDebug(5, "File name partial match for: %s-%s ext: %s\n", name.c_str(), label,
                  ext.c_str());
  } else {
    return false;
  }
  file = name_form;
  hdr = StrLib::equal(hdr_form, "-") ? "" : hdr_form;
  takeType(type_form);
  param = std::string(params).substr(0, max_param);
  takeParams(Strings(params, ','), 0);
  return true;
}

int NameConv::readConventions(const char* name, bool& matched) {
  constexpr int line_size = 200;
  constexpr size_t shortest_line = 20;
  const char* list = Zqv::getResrc("name_conv", "name.cnv");
  String found;
  if (FileTool::addPath(Zqv::getDatabasePath(), StrLib::valid(list, "name.cnv"), found) == 0) {
    String other;
    if (FileTool::addPath(Zqv::getDatabasePath(), "name_conv", other) != 0) {
      found.copy(other.get());
    }
  }
  File conventions;
  if (conventions.open(found.get(), "r") == 0) {
    Zqv::outWarning("NameConv: No file name convention file: %s\n", found.get());
    return 0;
  }
  constexpr int max_lines = 100000;
  char line[line_size];
  for (int i = 0; i < max_lines && !matched && conventions.getLine(line, line_size) > 0; i++) {
    matched = line[0] != '#' && std::strcspn(line, "\n") >= shortest_line && takeLine(line, name);
  }
  return 1;
}

int NameConv::set(const char* name) {
  init();
  if (!StrLib::valid(name)) {
    return 0;
  }
  if (StrLib::iequal(name, "none")) {
    return 1;
  }
  if (*name == '@') {
    file = name + 1;
    setOffset();
    return 1;
  }
  const Strings parts(name, ',');
  std::string plain = parts.getString(0);
  for (size_t colon = plain.rfind(':');
       colon != std::string::npos && colon + 2 < plain.size() && plain[colon + 2] == '=';
       colon = plain.rfind(':')) {
    key.insert(key.begin(), {plain[colon + 1], plain.substr(colon + 3, max_key)});
    plain.resize(colon);
  }
  key.resize(std::min(key.size(), max_keys));
  takeParams(parts, 3);
  bool matched = false;
  if (readConventions(plain.c_str(), matched) == 0) {
    file = plain;
    setOffset();
    return 0;
  }
  if (!matched) {
    file = plain;
    hdr = StrLib::acopy(parts.getString(1));
    type = StrLib::acopy(parts.getString(2)).substr(0, max_type);
    Zqv::outDebug("No file name conversion for: %s\n", plain.c_str());
  }
  setOffset();
  return 1;
}

void NameConv::setOffset() {
  long least = 0;
  Item item;
  for (const char* p = file.c_str(); nextItem(p, item);) {
    if (item.kind != Item::TOKEN) {
      continue;
    }
    long step = 0;
    switch (item.letter) {
      case 'd':
      case 'j': step = seconds_a_day; break;
      case 'h': step = seconds_an_hour; break;
      case 'n': step = seconds_a_minute; break;
      default: continue;
    }
    step *= std::max(item.number, 1);
    least = least == 0 ? step : std::min(least, step);
  }
  off = least == 0 ? Const::MISS : Tools::cut(static_cast<double>(least));
}

int NameConv::setFixDate(const char* text) {
  fix_date.init();
  if (text == nullptr) {
    return 0;
  }
  int day = Const::MISS;
  int month = Const::MISS;
  int hour = Const::MISS;
  int minute = Const::MISS;
  const int len = StrLib::length(text);
  const bool all_digits = len > 0 && StrLib::isNum(text, len);
  if (*text == '#') {
    const char* p = text + 1;
    fix_date = readStamp(p);
    return 1;
  }
  if (all_digits && len == 6) {
    std::sscanf(text, "%2d%2d%2d", &month, &day, &hour);
  } else if (all_digits && len == 4) {
    std::sscanf(text, "%2d%2d", &day, &hour);
  } else if (all_digits && len == 3) {
    std::sscanf(text, "%1d%2d", &day, &hour);
  } else if (StrLib::contains(text, "d")) {
    std::sscanf(text, "%6dd%6d:%6d", &day, &hour, &minute);
  } else if (*text == ':') {
    std::sscanf(text, ":%6d", &minute);
  } else if (StrLib::equal(text, "-:", 2)) {
    if (std::sscanf(text, "-:%6d", &minute) == 1) {
      minute = -minute;
    }
  } else if (std::sscanf(text, "%6d:%6d", &hour, &minute) == 2 && *text == '-' && hour == 0) {
    minute = -minute;
  }
  fix_date.set(Const::MISS, month, day, hour, minute, Const::FMISS);
  return 1;
}

int NameConv::setPath(const char* text) {
  if (text == nullptr) {
    path.clear();
    return 0;
  }
  const char* name = nullptr;
  if (*text == '+') {
    name = text + 1;
  } else if (StrLib::equal(text, "res=", 4) || StrLib::equal(text, "res:", 4)) {
    name = text + 4;
  }
  if (name == nullptr) {
    path = text;
    return 1;
  }
  const char* value = Zqv::getResrc(name);
  if (value == nullptr) {
    return 0;
  }
  path = value;
  return 1;
}

const NameConv::Key* NameConv::findKey(char c) const {
  const auto found =
      std::find_if(key.begin(), key.end(), [c](const Key& k) { return k.letter == c; });
  return found == key.end() ? nullptr : &*found;
}

int NameConv::setKey(char c, const char* value) {
  const std::string text = StrLib::acopy(value).substr(0, max_key);
  for (Key& k : key) {
    if (k.letter == c) {
      k.value = text;
      return 1;
    }
  }
  if (key.size() >= max_keys) {
    return 0;
  }
  key.push_back({c, text});
  return 1;
}

const char* NameConv::getKey(char c) const {
  const Key* found = findKey(c);
  return found == nullptr ? "" : found->value.c_str();
}

int NameConv::setExt(const char* text) {
  ext = StrLib::acopy(text).substr(0, max_ext);
  return 1;
}

/** The directories of a path token. @return false if the token is none */
bool NameConv::pathToken(char token, const std::string& name, std::string& list) const {
  const char* resource = name.empty() ? pathResource(token) : name.c_str();
  if (resource == nullptr) {
    return false;
  }
  if (!path.empty()) {
    list = path;
    return true;
  }
  const char* value = Zqv::getResrc(resource);
  if (token == 'D' && value != nullptr && *value == '+') {
    value = Zqv::getResrc(value + 1);
  }
  list = StrLib::valid(value, ".");
  return true;
}

/** Adds the directory being tried, and tests what stands there so far. */
void NameConv::addPath(const std::string& list, std::string& text) {
  npath = FileTool::numPath(list.c_str());
  String entry;
  FileTool::getPath(list.c_str(), cpath, entry);
  text += entry.get();
  if (text != tested) {  // a search tests the same directory at every step
    tested = text;
    tested_exists = FileTool::exist(text.c_str());
  }
  pexist = pexist && tested_exists;
}

int NameConv::encode(const Date& at, int which, String& out) {
  const std::string& form = which == 1 ? hdr : file;
  out.clear();
  if (form.empty()) {
    return 0;
  }
  int year = Const::MISS;
  int month = Const::MISS;
  int day = Const::MISS;
  int hour = Const::MISS;
  int minute = Const::MISS;
  // A field as text, and kept in rounded form as part of the name's date.
  const auto put = [](int v, int step, const char* width, const char* absent, int& kept) {
    if (missing(v)) {
      return std::string(absent);
    }
    kept = rounded(v, step);
    return digits(width, kept);
  };
  std::string text;
  std::string list;
  Item item;
  for (const char* p = form.c_str(); nextItem(p, item);) {
    if (item.kind == Item::LITERAL) {
      text += item.letter;
      continue;
    }
    if (pathToken(item.letter, item.name, list)) {
      addPath(list, text);
      continue;
    }
    switch (item.letter) {
      case 'Y': text += put(at.getYear(), item.number, "4", "0000", year); break;
      case 'y': {
        const std::string yy = put(at.getYear00(), item.number, "2", "00", year);
        year += missing(year) ? 0 : at.getYear() - at.getYear00();
        text += yy;
        break;
      }
      case 'm': text += put(at.getMonth(), item.number, "2", "00", month); break;
      case 'B':
      case 'b':
        month = at.getMonth();
        if (missing(month)) {
          text += item.letter == 'B' ? "XXX" : "xxx";
        } else {
          text += item.letter == 'B' ? DateTool::getMonth(month) : DateTool::getMonthLower(month);
        }
        break;
      case 'd': text += put(at.getDay(), item.number, "2", "00", day); break;
      case 'j': {
        int julian = Const::MISS;
        text += put(at.getJulian(), item.number, "3", "000", julian);
        Date::setJulian(at.getYear(), julian, month, day);
        break;
      }
      case 'h': text += put(at.getHour(), item.number, "2", "00", hour); break;
      case 'n': text += put(at.getMinute(), item.number, "2", "00", minute); break;
      case 'e': text += ext; break;
      default: {
        const Key* found = findKey(item.letter);
        if (found != nullptr) {
          const std::string value = found->value.empty() ? "0" : found->value;
          text += item.number > 0 ? value.substr(0, static_cast<size_t>(item.number)) : value;
        }
        break;
      }
    }
  }
  out.copy(text.c_str());
  date.init();
  date.set(year, month, day, hour, minute, Const::FMISS);
  constexpr int detail = 6;
  if (Zqv::outDebug(detail, "Filename: %s\n", out.get()) != 0) {
    Zqv::outDebug(detail, "Date: ");
    date.print();
  }
  return 1;
}

int NameConv::decode(const char* name) {
  if (!StrLib::valid(name) || file.empty()) {
    return 0;
  }
  const char* form = file.c_str();
  const char* at = name;
  const int slashes = StrLib::occurs(form, '/');
  const int have = StrLib::occurs(name, '/');
  const char* depth = name;  // up to here a path token reads
  if (have < slashes) {
    form += StrLib::lastIndex(form, '/') + 1;
    at += StrLib::lastIndex(name, '/') + 1;
    depth = at;
  } else if (slashes == 0) {
    depth = name + StrLib::lastIndex(name, '/') + 1;
  } else {
    depth = name + StrLib::index(name, '/', have - slashes);
  }
  Zqv::outDebug(4, "Filename decode: %d = %s\n", slashes, depth);

  NameConv read = *this;
  int year = Const::MISS;
  int month = Const::MISS;
  int day = Const::MISS;
  int hour = Const::MISS;
  int minute = Const::MISS;
  int julian = Const::MISS;
  std::string list;
  Item item;
  for (const char* p = form;;) {
    const char* here = p;
    if (!nextItem(p, item)) {
      break;
    }
    Zqv::outDebug(5, "%s = %s\n", here, at);
    if (item.kind == Item::LITERAL) {
      if (*at != item.letter) {
        return 0;
      }
      at++;
      continue;
    }
    if (pathToken(item.letter, item.name, list)) {
      if (at < depth) {
        read.path.assign(at, depth);
        at = depth;
      }
      continue;
    }
    if (isDateToken(item.letter)) {
      bool good = true;
      switch (item.letter) {
        case 'Y': good = readDigits(at, 4, year); break;
        case 'y': good = readDigits(at, 2, year); break;
        case 'm': good = readDigits(at, 2, month); break;
        case 'd': good = readDigits(at, 2, day); break;
        case 'j': good = readDigits(at, 3, julian); break;
        case 'h': good = readDigits(at, 2, hour); break;
        case 'n': good = readDigits(at, 2, minute); break;
        default:
          month = StrLib::length(at) < 3 ? 0 : DateTool::decodeMonth(at);
          good = month != 0;
          at += good ? 3 : 0;
          break;
      }
      if (!good) {
        return 0;
      }
      continue;
    }
    const Key* known = findKey(item.letter);
    const size_t known_size = known == nullptr ? 0 : known->value.size();
    if (known_size > 0 && StrLib::equal(at, known->value.c_str(), static_cast<int>(known_size))) {
      at += known_size;
      continue;
    }
    const char* rest = p;
    Item next;
    const bool more = nextItem(rest, next);
    const char* end = at + std::strlen(at);
    if (more && next.kind == Item::LITERAL) {
      end = std::find(at, end, next.letter);
    }
    if (item.number > 0 && end - at > item.number) {
      end = at + item.number;
    }
    if (item.letter == 'e') {
      read.setExt(std::string(at, end).c_str());
    } else {
      read.setKey(item.letter, std::string(at, end).c_str());
    }
    at = end;
  }
  if (*at != '\0') {
    return 0;  // something is left over: the name is another one
  }
  *this = read;
  if (!missing(julian)) {
    int full_year = year;
    if (!missing(year) && year < 100) {
      full_year = year + (year < 50 ? 2000 : 1900);
    }
    Date::setJulian(full_year, julian, month, day);
  }
  date.init();
  date.set(year, month, day, hour, minute, Const::FMISS);
  return 1;
}

bool NameConv::isThere(const String& name) const {
  return pexist && (output || FileTool::getSize(name.get()) > min_size);
}

/** Encodes a date for each directory until a file is there; cpath is back at the first if none is.
 */
bool NameConv::encodePaths(const Date& at, String& out, const char* debug) {
  npath = 1;
  tested.clear();
  for (cpath = 0; cpath < npath; cpath++) {
    pexist = true;
    if (encodeFile(at, out) == 0) {
      break;
    }
    if (debug != nullptr) {
      Zqv::outDebug(3, "%s: %s\n", debug, out.get());
    }
    if (isThere(out)) {
      return true;
    }
  }
  cpath = 0;
  return false;
}

void NameConv::fill(const Date& at, NameConvFile& found) {
  encodeHdr(at, found.header);
  encodeFile(at, found.filename);
  found.type = type;
  found.param = param;
  found.date = date;
  found.offset = off;
}

int NameConv::setFile(const Date& at, NameConvFile& found) {
  String name;
  encodePaths(at, name, nullptr);
  fill(at, found);
  return 1;
}

void NameConv::applyFixDate(Date& at) const {
  const int month = fix_date.getMonth();
  if (!missing(month)) {
    if (at.getMonth() < month) {
      at.addYears(-1);
    }
    at.setMonth(month);
  }
  const int day = fix_date.getDay();
  if (!missing(day)) {
    if (at.getDay() < day) {
      at.addMonths(-1);
    }
    at.setDay(day);
  }
  const int hour = fix_date.getHour();
  if (!missing(hour)) {
    if (hour < 0) {
      at.setHour(rounded(at.getHour(), -hour));
    } else {
      if (at.getHour() < hour) {
        at.addDays(-1);
      }
      at.setHour(hour);
    }
  }
  const int minute = fix_date.getMinute();
  if (!missing(minute)) {
    if (minute < 0) {
      at.setMinute(rounded(at.getMinute(), -minute));
    } else {
      if (at.getMinute() < minute) {
        at.addHours(-1);
      }
      at.setMinute(minute);
    }
  }
}

/** Walks from a date in a direction, directory by directory, until a file is there. The date
 * becomes that of the last name looked at. */
void NameConv::search(Date& at, int direction, int steps, String& out) {
  bool found = false;
  tested.clear();
  npath = 1;
  for (cpath = 0; cpath < npath && !found; cpath++) {
    Date step = at;
    for (int i = 0; i < steps && !found; i++) {
      pexist = true;
      Zqv::outDebug(3, "LATE:%d %d %d %d %d\n", step.getYear(), step.getMonth(), step.getDay(),
                    step.getHour(), step.getMinute());
      if (encodeFile(step, out) == 0) {
        break;
      }
      Zqv::outDebug(3, "LATE: %s\n", out.get());
      if (!pexist) {
        break;
      }
      found = isThere(out);
      if (missing(off) || off == 0) {
        break;
      }
      move(step, static_cast<long>(off) * direction);
    }
    if (found) {
      break;
    }
  }
  if (!found) {
    cpath = 0;
  }
  at = date;
  Zqv::outDebug(3, "LATEST: %s %s %d %d\n", out.get(), type.c_str(), cpath, found ? 1 : 0);
}

int NameConv::setLatest(const char* text, NameConvFile& found) {
  found.init();
  tested.clear();
  const char* p = text == nullptr ? "la" : text;
  if (*p == '>') {
    output = true;
    p++;
  }
  if (*p == '@') {
    found.filename.copy(p + 1);
    found.type = type;
    found.offset = off;
    return 1;
  }
  Date at;
  if (*p == '#') {
    p++;
    at.set(readStamp(p));
  } else {
    const char* env = std::getenv("zqvcurtime");
    if (Zqv::getInitTime() != Const::MISS) {
      at.set(static_cast<long>(Zqv::getInitTime()));
    } else if (late_date.isSet()) {
      at = late_date;
    } else if (StrLib::valid(env)) {
      const char* stamp = *env == '#' ? env + 1 : env;
      at.set(readStamp(stamp));
    } else {
      at.set();
    }
    applyFixDate(at);
  }
  int sign = readSign(p);
  if (beginsOffset(p)) {
    move(at, readOffset(p) * (sign > 0 ? 1 : -1));
    sign = 0;
  }
  String name;
  if (*p == '\0') {
    encodePaths(at, name, "LATE0");
    fill(at, found);
    return 1;
  }
  if (sign == 0) {
    sign = readSign(p);
  }
  if (std::tolower(static_cast<unsigned char>(*p)) == 'l') {
    p++;
    if (std::tolower(static_cast<unsigned char>(*p)) == 'a') {
      p++;
    }
    int steps = limit;
    if (!missing(min_time) && !missing(off) && off != 0) {
      const double window = static_cast<double>(min_time) * seconds_a_minute / off + 1;
      steps = std::max(steps, std::min(Tools::cut(window), max_window));
    }
    if (*p == '#' && isDigit(p[1])) {
      steps = std::min(Tools::cut(std::strtod(p + 1, nullptr)), max_steps);
      Zqv::outDebug(4, "LATE LIMIT: %d\n", steps);
      for (p++; isDigit(*p); p++) {
      }
    }
    search(at, sign > 0 ? 1 : -1, steps, name);
  }
  sign = readSign(p);
  if (beginsOffset(p)) {
    move(at, readOffset(p) * (sign > 0 ? 1 : -1));
  }
  fill(at, found);
  return 1;
}

int NameConv::toPattern(String& out) {
  out.clear();
  if (!hasFile()) {
    return 0;
  }
  std::string text;
  std::string list;
  Item item;
  for (const char* p = file.c_str(); nextItem(p, item);) {
    if (item.kind == Item::LITERAL) {
      text += literalPattern(std::string(1, item.letter));
    } else if (pathToken(item.letter, item.name, list)) {
      String entry;
      FileTool::getPath(list.c_str(), std::min(cpath, std::max(npath - 1, 0)), entry);
      text += literalPattern(entry.get());
    } else if (item.letter == 'Y') {
      text += "????";
    } else if (item.letter == 'j' || item.letter == 'b' || item.letter == 'B') {
      text += "???";
    } else if (isDateToken(item.letter)) {
      text += "??";
    } else if (item.letter == 'e') {
      text += "*";
    } else if (StrLib::valid(getKey(item.letter))) {
      text += literalPattern(getKey(item.letter));
    } else {
      constexpr int longest = 100;
      text += item.number > 0
                  ? std::string(static_cast<size_t>(std::min(item.number, longest)), '?')
                  : std::string("*");
    }
  }
  return out.copy(text.c_str());
}

void NameConv::print() const {
  std::printf("File: %s\nHeader: %s\nType: %s\nParam: %s\nExt: %s\n", file.c_str(), hdr.c_str(),
              type.c_str(), param.c_str(), ext.c_str());
  for (const Key& k : key) {
    std::printf("Key: %c=%s\n", k.letter, k.value.c_str());
  }
  std::printf("Path: %s\nOffset: %d\nMin size: %d\nMin time: %d\nLimit: %d\nDate: ", path.c_str(),
              off, min_size, min_time, limit);
  date.print();
}

}  // namespace ZQV
