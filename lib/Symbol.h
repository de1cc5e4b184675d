#pragma once

#include <string>
#include <vector>

namespace ZQV {

class Point;

/** A set of named symbols, read from a text file: for each its name, then its points as "x,y"
 * within 0 to 1, with "L" or "F" to break the line, and "$" at its end. At most 100 symbols of 3000
 * points. */
class Symbol {
 public:
  /** Empty. */
  Symbol() = default;
  explicit Symbol(const char* file) { init(file); }

  /** Reads the file, if a name is given. @return 1 */
  int init(const char* file);
  /** Reads the symbols of a plain file. @return 1; 0 with a warning if it can't be opened, with the
   * set empty */
  int read(const char* file);
  [[nodiscard]] int getNum() const { return num; }

  /** Starts a walk along the first symbol in the file whose whole name begins the given one: a
   * stored "rain" serves "rain2". @return 1; 0 if none fits */
  int setSymb(const char* symbol);
  /** The next point. @return 1 with a point, 2 at a break of the line, 0 at the end, with p left
   *  alone */
  int get(Point& p);

 private:
  std::vector<std::string> name;  ///< at most 14 characters each
  std::vector<size_t> index;      ///< first point of each symbol
  std::vector<int> x;             ///< coordinate times 100; -1 "L", -2 "F", -9 the end
  std::vector<int> y;
  int num = 0;
  int symb = -1;  ///< place of the walk, -1 = none
};

}  // namespace ZQV
