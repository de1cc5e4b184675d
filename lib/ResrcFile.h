#pragma once

#include <array>
#include <string>
#include <vector>

#include "File.h"

namespace ZQV {

class Resrc;
class String;

/** Reads a resource file: lines "pattern value" with conditions (IF, ELSE, ELIF, END) on tags (DEF,
 * UNDEF). Tags and open conditions outlive close(), so that one object serves a list of files. */
class ResrcFile : public File {
 public:
  ResrcFile() = default;
  /** Takes the program's name and its alias from the store. */
  explicit ResrcFile(const Resrc& store) { set(store); }

  /** Drops tags and conditions and takes prog and name, 29 characters each. @return 1 */
  int set(const Resrc& store);
  int set(const char* prog_name, const char* alias);
  /** Defines a tag of up to 19 characters. @return 1; 0 if ten exist */
  int setTag(const char* text);

  /** Opens a file, or in a directory the first of "zqv.cfg", ".zqvdef", "Zqv.res"; an empty path
   * means "zqv.cfg". @return 1 or 0 */
  int open(const char* path);
  /** The next usable line. @return 1, or -1 at the end of the file or if none is open */
  int get(String& key, String& value);
  /** The next line whose key fits this program, the key cut down to the resource's name. @return 1
   * or -1 */
  int getValid(String& key, String& value);

  /** The pattern of a line fits "name.item". "*" stands for any text; an unqualified name never
   * fits. */
  [[nodiscard]] bool compare(const char* item, const char* pattern) const;
  /** The pattern fits with its own last part as the item. */
  [[nodiscard]] bool valid(const char* pattern) const;
  /** The text after the last "." or "*"; without either the pattern less its first character:
   * deliberate.
   *  @return 1 */
  static int parseName(const char* pattern, String& name);

 private:
  static constexpr int max_tags = 10;
  int directive(const char* word, const char* tag, int words);
  [[nodiscard]] bool hasTag(const char* text) const;
  void undefine(const char* text);
  void updateMatches();

  std::string prog;
  std::string name;
  std::array<std::string, max_tags> tag;
  int num_tag = 0;
  std::vector<char> match;  ///< a cell per open IF: 0 false, 1 true, 99 a branch was taken already
  bool matches = true;
  int num_line = 0;  ///< lines read of the file
};

}  // namespace ZQV
