#pragma once

#include <deque>
#include <optional>
#include <string>

namespace ZQV {

class String;

/** The store of named settings, in order of first insertion. Being set and having a value are
 *  different: an item may be there without value. Names compare exactly. */
class Resrc {
 public:
  /** Where the value of an item came from. */
  enum Source {
    NONE = 0,
    BUILTIN = 1,
    FILE_SOURCE = 2,
    ENVIRONMENT = 3,
    COMMAND_LINE = 4,
    PROGRAM = 5
  };

  /** Sets the value and source of an item, which is appended if it is new. @return 1 */
  int add(const char* name, const char* value, int type);
  int set(const char* name, const char* value) { return add(name, value, PROGRAM); }
  int set(const char* name, const String& value);
  int set(const char* name, const char* value, int type) { return add(name, value, type); }
  int put(const char* name, const char* value) { return add(name, value, PROGRAM); }
  /** The value becomes old, sep, value; a sep of 0 is the newline. An absent item is created with
   * no source; an absent value changes nothing. @return 1 */
  int append(const char* name, const char* value, char sep);
  /** The value becomes value, sep, old. */
  int prepend(const char* name, const char* value, char sep);

  /** The value; the empty text if the item has none; absent if there is no such item. The pointer
   *  holds until the item changes. */
  [[nodiscard]] const char* get(const char* name) const;
  /** The value, or fallback if the item doesn't exist. */
  [[nodiscard]] const char* get(const char* name, const char* fallback) const;
  /** Source code, 0 if the item doesn't exist. */
  [[nodiscard]] int getType(const char* name) const;
  /** False if absent or "no", "off" or "false" in any case; true otherwise. */
  [[nodiscard]] bool getBool(const char* name) const;
  /** The number if the value begins with a decimal digit, else fallback: "-5" gives the fallback,
   *  deliberately. */
  [[nodiscard]] float get(const char* name, float fallback) const;
  [[nodiscard]] int get(const char* name, int fallback) const;
  /** Scans the value. @return fields read; 0 if the item doesn't exist */
  int scanf(const char* name, const char* format, ...) const __attribute__((format(scanf, 3, 4)));

  /** Walks names and values: flag 0 starts at the first item, else goes on. @return 1; 0 at the end
   */
  int getValues(String& name, String& value, int flag);
  void rewind() { cur = 0; }
  /** The next name, absent at the end. */
  const char* getNext();

  /** Writes "%s: %s\n", or "%s: not set\n". */
  void print(const char* name) const;
  /** Writes every item with the tag of its source. */
  void printAll() const;
  void clear();
  void init() { clear(); }

 private:
  struct Item {
    std::string name;
    std::optional<std::string> data;
    int type = NONE;
  };
  [[nodiscard]] const Item* find(const char* name) const;
  Item* find(const char* name);
  int join(const char* name, const char* value, char sep, bool before);

  std::deque<Item> items;  // values stay where they are while items are added
  size_t cur = 0;
};

}  // namespace ZQV
