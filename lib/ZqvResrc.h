#pragma once

namespace ZQV {

class ResrcDBList;

/** The vocabulary of options that all programs of the package share. */
class ZqvResrc {
 public:
  /** Numbers of the standard resources, in the order of the table, and of their groups. */
  enum Id {
    CITY_FILE = 2,
    COLOR_TEXT = 16,
    DRAW = 24,
    FILENAME = 26,
    MAP_FILE = 46,
    VARIABLE = 70,
    LAST = 72,
    TYPE = 69,
    GENERAL = 73,
    PATHS = 74,
    FILES = 75,
    TIME = 76,
    INPUT_OUTPUT = 78,
    DOMAINS = 80,
    CITY_MAP = 81,
    PLOTTING = 82,
    COLORS = 83,
    IDENTIFIER = 85,
    DISPLAY = 88
  };
  /** Adds the resource of number id, 0 to 72, or the group 73 to 88; any other number adds nothing.
   *  @return 1 always */
  static int add(ResrcDBList& list, int id);
};

}  // namespace ZQV
