#pragma once

#include <string>
#include <vector>

#include "Const.h"
#include "Date.h"
#include "String.h"

namespace ZQV {

struct NameConvFile;
class Strings;

/** One name convention: a template that turns dates and keys into file names and back, and the
 * search for the latest file that exists.
 *
 *  A template copies its characters; "{" and "}" are dropped and a blank becomes "_". Tokens: %Y %y
 * %m %B %b %d %j %h %n for the date, with a rounding step (%6h); %e the extension; %C %D %F %R %G
 * %I %W %T %M %S and
 *  %{name} for an entry of a resource that lists directories; any other letter a key. */
class NameConv {
 public:
  NameConv() { initParam(); }

  /** Takes a convention by name: "NAME[:K=value...][,header[,type[,min=N][,size=N]]]", looked up in
   * the convention file; a name that isn't there is the template itself. "@text" is a template too.
   *  @return 1; 0 for an empty name or without a convention file */
  int set(const char* name);
  /** Fixes parts of the time that files are looked for at (hour, hour:minute, day and hour, ...),
   * or rounds it (negative numbers). @return 1; 0 for an absent text */
  int setFixDate(const char* text);
  /** Directories that stand in for those of the resources; "+name", "res=name" and "res:name" take
   * them from a resource. @return 1; 0 if it isn't set */
  int setPath(const char* text);
  /** @return 1; 0 if twenty keys exist */
  int setKey(char c, const char* value);
  /** The value, or the empty text. */
  [[nodiscard]] const char* getKey(char c) const;
  int setExt(const char* text);
  [[nodiscard]] const char* getExt() const { return ext.c_str(); }
  [[nodiscard]] const char* getFile() const { return file.c_str(); }
  [[nodiscard]] const char* getType() const { return type.c_str(); }
  [[nodiscard]] const char* getParam() const { return param.c_str(); }
  [[nodiscard]] int getOffset() const { return off; }
  [[nodiscard]] int getMinSize() const { return min_size; }
  void setOutput(bool flag) { output = flag; }
  void setLateLimit(int n) { limit = n; }
  void setLateDate(const Date& at) { late_date = at; }
  [[nodiscard]] const Date& getDate() const { return date; }
  /** There is a template, and it isn't "none". */
  [[nodiscard]] bool hasFile() const;

  /** Name for a date. @param which  1 selects the header. @return 1; 0 if the template is empty */
  int encode(const Date& at, int which, String& out);
  int encodeFile(const Date& at, String& out) { return encode(at, 0, out); }
  int encodeHdr(const Date& at, String& out) { return encode(at, 1, out); }
  /** Reads date, keys, extension and path out of a name. A plain file name is decoded by the last
   * part of the template. @return 1; 0 if the name doesn't fit, and nothing changes */
  int decode(const char* name);

  /** Resolves the name for an exact date. @return 1 */
  int setFile(const Date& at, NameConvFile& found);
  /** Resolves a date text: "#YYYYMMDDHHMM", "la" the latest, "la-2", "-2la", "1d2:30", "la#10",
   * ">la" for writing, "@file". What isn't found still gets a name: test its existence. @return 1
   */
  int setLatest(const char* text, NameConvFile& found);

  /** The template as a pattern for glob(3). @return 1; 0 without a template */
  int toPattern(String& out);
  void print() const;

 private:
  struct Key {
    char letter;
    std::string value;
  };
  void initParam();
  void init();
  void setOffset();
  int readConventions(const char* name, bool& matched);
  bool takeLine(const char* line, const std::string& name);
  void takeType(const char* text);
  void takeParams(const Strings& tokens, int first);
  bool pathToken(char token, const std::string& name, std::string& list) const;
  void addPath(const std::string& list, std::string& text);
  [[nodiscard]] const Key* findKey(char c) const;
  [[nodiscard]] bool isThere(const String& name) const;
  bool encodePaths(const Date& at, String& out, const char* debug);
  void applyFixDate(Date& at) const;
  void search(Date& at, int direction, int steps, String& out);
  void fill(const Date& at, NameConvFile& found);

  static constexpr size_t max_keys = 20;

  std::string file;
  std::string hdr;
  std::string path;
  std::string ext;
  std::vector<Key> key;
  int min_size = 0;            ///< a file must be larger than this, bytes
  int min_time = Const::MISS;  ///< search window, minutes
  std::string type;
  std::string param;
  int off = Const::MISS;
  Date date;
  DateVal fix_date;
  Date late_date;
  bool output = false;
  int limit = 500;
  int cpath = 0;
  int npath = 1;
  bool pexist = true;
  std::string tested;  ///< directory tested last, and whether it was there
  bool tested_exists = false;
};

}  // namespace ZQV
