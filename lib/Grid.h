#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Date.h"
#include "Domain.h"
#include "Point.h"
#include "VarSpec.h"

namespace ZQV {

class EarthPoint;
class GridPoint;
class Range;

/** One two-dimensional field of values on a domain, row after row from the top, with what tells its
 *  identity. Const::FMISS marks no data. A field off a regular grid has the place of each point
 * besides. */
class Grid {
 public:
  Grid() = default;
  /** Allocates. */
  Grid(int cols, int rows);

  void init() { *this = Grid(); }
  /** Takes all of another grid. @return 1 */
  int copy(const Grid& other);
  /** All but the arrays; values of another size are dropped. */
  int copyInfo(const Grid& other);
  /** The arrays, with the size. */
  int copyData(const Grid& other);

  void setType(int n) { type = n; }
  void setVersion(int n) { version = n; }
  void setSource(int n) { source = n; }
  /** Cut at 49 characters. */
  void setDatim(const char* text);
  /** Cut at 89 characters. */
  void setInfo(const char* text);
  void setDate(const Date& d) { date = d; }
  /** A size other than that of the values drops them. */
  void setSize(int cols, int rows);
  void setGridType(int n) { grid_type = n; }
  /** Where the field lies; its size is a matter of setSize(). */
  void setDomain(const Domain& d);
  void setModel(int n) { model = n; }
  /** Cut at 19 characters. */
  void setGenName(const char* text);
  void setVar(const VarSpec& spec) { var = spec; }
  void setLevel(const Level& level) { var.setLevel(level); }
  void setForeTime(const ForeTime& fore) { var.setForeTime(fore); }

  [[nodiscard]] int getType() const { return type; }
  [[nodiscard]] int getVersion() const { return version; }
  [[nodiscard]] int getSource() const { return source; }
  [[nodiscard]] const char* getDatim() const { return datim.c_str(); }
  [[nodiscard]] const char* getInfo() const { return info.c_str(); }
  [[nodiscard]] const Date& getDate() const { return date; }
  Date& getDate() { return date; }
  /** The date moved by the forecast time. */
  [[nodiscard]] Date getValidDate() const;
  [[nodiscard]] int getNx() const { return nx; }
  [[nodiscard]] int getNy() const { return ny; }
  [[nodiscard]] float getDx() const { return domain.getDx(); }
  [[nodiscard]] float getDy() const { return domain.getDy(); }
  [[nodiscard]] int getGridType() const { return grid_type; }
  [[nodiscard]] const Domain& getDomain() const { return domain; }
  Domain& getDomain() { return domain; }
  [[nodiscard]] int getProj() const { return domain.getProj(); }
  [[nodiscard]] int getModel() const { return model; }
  [[nodiscard]] const char* getGenName() const { return gen_name.c_str(); }
  [[nodiscard]] const VarSpec& getVar() const { return var; }
  [[nodiscard]] const Level& getLevel() const { return var.getLevel(); }
  [[nodiscard]] const ForeTime& getForeTime() const { return var.getForeTime(); }

  /** The transformations of Domain on the grid's own. */
  int tran(EarthPoint& e, Point& p) { return domain.tran(e, p); }
  int tran(const Point& p, EarthPoint& e) { return domain.tran(p, e); }
  int tran(const GridPoint& g, Point& p) const { return domain.tran(g, p); }
  int tran(const Point& p, GridPoint& g) const { return domain.tran(p, g); }
  int tran(EarthPoint& e, GridPoint& g) { return domain.tran(e, g); }
  int tran(const GridPoint& g, EarthPoint& e) { return domain.tran(g, e); }
  int tran(int corner, EarthPoint& e) { return domain.tran(corner, e); }
  int tran(int corner, GridPoint& g) { return domain.tran(corner, g); }
  int tran(int corner, Point& p) { return domain.tran(corner, p); }
  /** Into another domain's plane. */
  int tran(const Point& in, Domain& to, Point& out) {
    return Domain::translate(domain, to, in, out);
  }

  /** Values, all missing. @return 1; 0 if the size is below 1 or beyond all reason */
  int allocData();
  /** Places of the points, all missing. @return as allocData() */
  int allocLocate();
  [[nodiscard]] bool isData() const { return !data.empty(); }
  [[nodiscard]] bool isLocate() const { return !xloc.empty(); }
  /** The grid holds a single value. */
  [[nodiscard]] bool isValue() const { return nx == 1 && ny == 1; }

  /** @return 1; 0 outside the grid or without values */
  int setValue(int x, int y, float v);
  /** Const::FMISS outside the grid or without values; a grid of one value gives it everywhere. */
  [[nodiscard]] float getValue(int x, int y) const;
  /** The same without the rule for a grid of one value. */
  [[nodiscard]] float getValue1(int x, int y) const {
    return isIn(x, y) && !data.empty() ? data[at(x, y)] : Const::FMISS;
  }
  /** Between the points, bilinear; Const::FMISS if one of those around is missing, even where it
   * would count nothing. */
  [[nodiscard]] float getValue(const GridPoint& g) const;
  [[nodiscard]] float getValue(const EarthPoint& e);
  [[nodiscard]] float getValue(const Point& p) const;
  /** @return 1; 0 outside the grid or without places */
  int setLocate(int x, int y, const Point& p);
  /** An unset point outside the grid or without places. */
  [[nodiscard]] Point getLocate(int x, int y) const;
  /** The values, getNx() * getNy() of them row after row; absent without. */
  [[nodiscard]] const float* getData() const { return data.empty() ? nullptr : data.data(); }
  float* getData() { return data.empty() ? nullptr : data.data(); }

  /** Of the values that aren't missing; both missing if there are none. @return 1; 0 without values
   */
  int getRange(float& min, float& max) const;
  int getRange(Range& range) const;
  /** Const::FMISS if there are no values. */
  [[nodiscard]] float getAverage() const;
  /** On every value that isn't missing. @return 1; 0 without values */
  int scale(float f);
  int offset(float f);

  void print() const;
  void printInfo() const;
  /** Writes "Size: %d %d\n", "Max: %f Min: %f Ave: %f\n", "Miss: %d\n". */
  void printStats() const;
  /** Writes "[%d,%d] = %f\n" for each value. */
  void printData() const;

 private:
  [[nodiscard]] bool isIn(int x, int y) const { return x >= 0 && x < nx && y >= 0 && y < ny; }
  [[nodiscard]] size_t at(int x, int y) const {
    return static_cast<size_t>(y) * static_cast<size_t>(nx) + static_cast<size_t>(x);
  }
  /** Points of the grid, 0 for a size that can't be allocated. */
  [[nodiscard]] size_t count() const;

  int type = 0;
  int version = 0;
  int source = Const::MISS;
  std::string datim;
  std::string info;
  Date date;
  int nx = Const::MISS;
  int ny = Const::MISS;
  int grid_type = Const::MISS;
  Domain domain;
  int model = Const::MISS;
  std::string gen_name;
  VarSpec var;
  std::vector<float> data;
  std::vector<float> xloc;
  std::vector<float> yloc;
};

}  // namespace ZQV
