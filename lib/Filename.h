#pragma once

#include <string>

#include "Date.h"
#include "NameConv.h"
#include "String.h"
#include "Strings.h"

namespace ZQV {

struct NameConvFile;

/** The data file that a plot works on: what the user gave (a date, "la", a path, nothing) resolved
 * through a name convention into a name, a header name and a date, and the list or time series of
 * files of a loop. */
class Filename {
 public:
  /** Chooses the convention. @return what NameConv::set gave */
  int setNameConv(const char* name);
  /** Resolves a date text under a convention; without one the text is the name. @return 1 if the
   * file exists */
  int set(const char* conv_name, const char* text);
  /** Resolves an exact date under a convention. @return 1 */
  int set(const char* conv_name, const Date& at);
  /** A literal name. @return 1 if the file exists */
  int set(const char* literal);

  /** Follows a date, unless the file is fixed. @return 1 if the file exists; 0 for a date that
   * isn't set */
  int setDate(const Date& at);
  /** The same for a frame of a loop: the search covers that moment alone, or the convention's
   * window.
   *  @param qualifier  not used */
  int setDate(const Date& at, const char* qualifier);
  /** Takes a file text, or several separated by commas ("A,nh=6" a series, "A,B,C" a list); an
   * empty one means the resource "filename", else "current", else the latest file. @return 1 */
  int setFile(const char* text);
  /** Selects file i of the series. @return 1; 0 out of range */
  int setFile(int i);
  /** Picks the file of an interactive or unattended run from the resources; may prompt.
   *  @return 1 if the file exists */
  int setFilePrompt(const char* prompt);
  /** Takes what a user's text means: "exit", "@name", "-", a date text, a name in the style of the
   * convention, or a literal name. @return 1 */
  int checkFile(const char* text);
  /** Writes the files that fit the convention, whatever their date. @return 1 */
  int listFile();

  /** n files; a negative n counts backward. @return 1 */
  int setNumFiles(int n);
  /** "H[:M][,H[:M]]", the span and the distance of the files. @return 1; 0 for an absent text */
  int setNumFiles(const char* text);

  void setType(const char* text) { type = text != nullptr ? text : ""; }
  void setName(const char* text) { name.copy(text != nullptr ? text : ""); }
  void setHeader(const char* text) { hdr.copy(text != nullptr ? text : ""); }
  int setFixDate(const char* text) { return conv.setFixDate(text); }
  int setPath(const char* text) { return conv.setPath(text); }
  int setKey(char c, const char* value) { return conv.setKey(c, value); }
  void setOutput(bool flag) { conv.setOutput(flag); }
  void setLateLimit(int n) { conv.setLateLimit(n); }
  void setLateDate(const Date& at) { conv.setLateDate(at); }
  /** The date that a series counts from; what is missing is filled in. */
  void setBaseDate(const Date& at);
  /** Moves name and header into a directory for writing. @return 1 if there is one */
  int addOutPath(const char* paths);

  [[nodiscard]] const char* getType() const { return type.c_str(); }
  [[nodiscard]] const char* getName() const { return name.get(); }
  /** Name of file i of the series; the selection stays. @return 1; 0 out of range */
  int getName(int i, String& out) const;
  [[nodiscard]] const char* getHeader() const { return hdr.get(); }
  [[nodiscard]] bool validHeader() const { return hdr.valid(); }
  [[nodiscard]] const char* getParam() const { return param.c_str(); }
  /** @return 1 if the date is set */
  int getDate(Date& out) const;
  [[nodiscard]] const Date& getDate() const { return date; }
  [[nodiscard]] DateVal getDateval() const { return static_cast<const DateVal&>(date); }
  /** Seconds between files of the series, Const::MISS if the convention has no time. */
  [[nodiscard]] int getOffset() const { return file_off; }
  [[nodiscard]] int getNumFiles() const { return num_file; }
  /** A resolution took place. */
  [[nodiscard]] bool isSet() const { return is_set; }
  /** The file is a literal one: it doesn't follow dates. */
  [[nodiscard]] bool isFixed() const { return fixed; }
  [[nodiscard]] bool exist() const;
  void print() const;
  void printConv() const { conv.print(); }

 private:
  enum { TIME_SERIES = 0, FILE_LIST = 2 };
  void take(const NameConvFile& found);
  int takeLatest(const char* text);
  void takeLiteral(const char* text);
  void splitResource(const char* text);

  bool is_set = false;
  bool fixed = false;
  std::string type;
  String name;
  String hdr;
  std::string param;
  Date date;
  Date base_date;
  NameConv conv;
  Strings files;
  int num_file = 1;
  int file_off = Const::MISS;
  int num_type = TIME_SERIES;
  int num_dir = 1;
};

}  // namespace ZQV
