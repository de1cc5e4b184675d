#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Const.h"
#include "Date.h"
#include "Domain.h"
#include "ImageColor.h"
#include "Rect.h"

namespace ZQV {

class EarthPoint;
class FloatArray;
class GridPoint;
class Point;
class RGB;

/** All of an Image but its pixels. */
struct ImageInfo {
  int source = 0;
  int type = 0;
  int version = 0;
  std::string datim;
  Date date;
  std::string info;
  int width = 0;
  int height = 0;
  int depth = 0;
  float xres = 0.0F;
  float yres = 0.0F;
  float xoff = 0.0F;
  float yoff = 0.0F;
  int bits_pixel = 0;
  int bytes_line = 0;
  int byte_order = 1;
  int color_type = 1;
  uint32_t red_mask = 0;
  uint32_t grn_mask = 0;
  uint32_t blu_mask = 0;
  int num_colors = 0;
  std::vector<ImageColor> colors;
  int trans_color = -1;
  Domain domain;
  mutable int index = 0;  ///< byte offset of the pixel read last
  bool pix_ave = true;
  std::array<int, 7> cutoff{Const::MISS, Const::MISS, Const::MISS, Const::MISS,
                            Const::MISS, Const::MISS, Const::MISS};
  int cutbase = -1;
  int numcut = 0;
  std::vector<float> values;
};

/** The one raster type: pixels of 8, 16, 24 or 32 bits from the top row down, a colour table, a
 * table of physical values, and, where the image is georeferenced, the Domain of its pixel grid.
 * Readers fill the header first, then call allocData(). Operations return 0 for a bad index, a
 * position off the image or a missing store, and 1 otherwise, and never report. */
class Image : private ImageInfo {
 public:
  /** Meaning of a pixel: a colour under the masks, an index into the colour table, a level code. */
  enum ColorType { TRUE_COLOR = 0, INDEXED = 1, DATA = 2 };

  /** Back to an empty image. */
  void init() { *this = Image(); }
  /** Takes over all but the pixels. @return 1; 0 if other is this image */
  int copyInfo(const Image& other);
  /** Takes over the pixels alone. @return 1 */
  int copyData(const Image& other);
  int copy(const Image& other);
  static int copyInfo(Image& to, const Image& from) { return to.copyInfo(from); }
  static int copyData(Image& to, const Image& from) { return to.copyData(from); }
  static int copy(Image& to, const Image& from) { return to.copy(from); }

  // Size and store.

  /** Size in pixels and bits a pixel. Allocates nothing. @return 1 */
  int set(int w, int h, int bits);
  /** The same with the domain and its nx by ny points. */
  int set(const Domain& d, int bits);
  int set(const DomainVal& d, int bits);
  /** The domain and its size; setBytesLine() must follow. */
  int setDomain(const Domain& d);
  int setDomain(const DomainVal& d);
  /** The domain alone, for a picture that has its size already. */
  int bindDomain(const Domain& d);
  /** Bytes of a row from width and depth. */
  int setBytesLine();
  int setBytesLine(int n);
  /** A cleared store; none if the size is 0. @return 1; 0 if it would take more than 128 MB, with
   * no store */
  int allocData();
  int clearData();
  /** Drops the pixels. */
  void freeData() { data.clear(); }
  [[nodiscard]] bool validData() const { return !data.empty(); }
  /** The store, getDataSize() bytes, rows of getBytesLine(); absent if there is none. */
  unsigned char* getData() { return data.empty() ? nullptr : data.data(); }
  [[nodiscard]] const unsigned char* getData() const {
    return data.empty() ? nullptr : data.data();
  }
  [[nodiscard]] long getDataSize() const { return static_cast<long>(data.size()); }
  /** Copies a row, getBytesLine() bytes. @return their number; 0 for a bad row */
  int getRow(int y, unsigned char* buffer) const;
  /** The bytes of a row in the store, getBytesLine() of them; absent for a bad row. */
  [[nodiscard]] const unsigned char* findRow(int y) const;
  unsigned char* findRow(int y) {
    return const_cast<unsigned char*>(std::as_const(*this).findRow(y));
  }
  /** The raw values of a row cut to bytes, getWidth() of them; 0 where nothing is stored. They stay
   *  where they are or are put into the buffer. */
  const unsigned char* getBytes(int y, std::vector<unsigned char>& buffer) const;

  // Header.

  void setSource(int v) { source = v; }
  [[nodiscard]] int getSource() const { return source; }
  void setType(int v) { type = v; }
  [[nodiscard]] int getType() const { return type; }
  void setVersion(int v) { version = v; }
  [[nodiscard]] int getVersion() const { return version; }
  /** Date and time as a text, cut at 49 characters. */
  void setDatim(const char* text);
  [[nodiscard]] const char* getDatim() const { return datim.c_str(); }
  void setDate(const Date& d) { date = d; }
  [[nodiscard]] const Date& getDate() const { return date; }
  /** Free text, cut at 79 characters. */
  void setInfo(const char* text);
  [[nodiscard]] const char* getInfo() const { return info.c_str(); }
  void setWidth(int v) { width = v; }
  [[nodiscard]] int getWidth() const { return width; }
  void setHeight(int v) { height = v; }
  [[nodiscard]] int getHeight() const { return height; }
  void setDepth(int v) { depth = v; }
  [[nodiscard]] int getDepth() const { return depth; }
  void setRes(float x, float y) { xres = x, yres = y; }
  [[nodiscard]] float getXRes() const { return xres; }
  [[nodiscard]] float getYRes() const { return yres; }
  void setOffset(float x, float y) { xoff = x, yoff = y; }
  [[nodiscard]] float getXOff() const { return xoff; }
  [[nodiscard]] float getYOff() const { return yoff; }
  void setBitsPixel(int v) { bits_pixel = v; }
  [[nodiscard]] int getBitsPixel() const { return bits_pixel; }
  [[nodiscard]] int getBytesLine() const { return bytes_line; }
  /** 1 = most significant byte first, 0 = least significant first. */
  void setByteOrder(int v) { byte_order = v; }
  [[nodiscard]] int getByteOrder() const { return byte_order; }
  void setColorType(int v) { color_type = v; }
  [[nodiscard]] int getColorType() const { return color_type; }
  /** Bit masks of a true colour pixel. */
  void setMask(uint32_t r, uint32_t g, uint32_t b) { red_mask = r, grn_mask = g, blu_mask = b; }
  [[nodiscard]] uint32_t getRedMask() const { return red_mask; }
  [[nodiscard]] uint32_t getGrnMask() const { return grn_mask; }
  [[nodiscard]] uint32_t getBluMask() const { return blu_mask; }

  // Colour table.

  /** n cleared entries. @return 1; 0 for n below 1 or above 65536, with the old table freed and the
   *  count as it was */
  int allocColors(int n);
  /** Drops the table; the count stays. */
  void freeColors() { colors.clear(); }
  /** The count alone: entries past it aren't reached by index. */
  void setNumColors(int n) { num_colors = n; }
  [[nodiscard]] int getNumColors() const { return num_colors; }
  [[nodiscard]] bool hasColors() const { return !colors.empty(); }
  /** 0.0 for a bad index. */
  [[nodiscard]] float getRed(int i) const;
  [[nodiscard]] float getGrn(int i) const;
  [[nodiscard]] float getBlu(int i) const;
  int getRGB(int i, RGB& rgb) const;
  int setRed(int i, float v);
  int setGrn(int i, float v);
  int setBlu(int i, float v);
  int setColor(int i, float r, float g, float b);
  int setColor(int i, const RGB& rgb);
  int setRGB(int i, const RGB& rgb) { return setColor(i, rgb); }
  /** The device's pixel value of an entry. */
  int setColorVal(int i, int v);
  [[nodiscard]] int getColorVal(int i) const;
  /** Entry of a raw pixel value in the whole table, whatever the count; absent if there is none. */
  [[nodiscard]] const ImageColor* findColor(int raw) const {
    return raw >= 0 && static_cast<size_t>(raw) < colors.size() ? &colors[static_cast<size_t>(raw)]
                                                                : nullptr;
  }
  /** Raw pixel value that is transparent, -1 for none. */
  void setTransColor(int v) { trans_color = v; }
  [[nodiscard]] int getTransColor() const { return trans_color; }
  [[nodiscard]] bool hasTransColor() const { return trans_color != -1; }

  // Level classes: kinds of data coded in one byte, between which no interpolation is allowed.

  /** "base:first:second:third": the code of no data and the lower bounds of the classes above the
   * first.
   *  @return 1; 0 if no number was read */
  int setCutoff(const char* text);
  /** Lower bound of class i + 1, i from 0 to 4. @return 1; 0 for a bad index */
  int setCutoff(int i, int v);
  /** Lower bound of class i, from 0 to getNumCut() + 1; Const::MISS if not set or out of range. */
  [[nodiscard]] int getCutoff(int i) const;
  [[nodiscard]] int getNumCut() const { return numcut; }
  [[nodiscard]] bool hasCutoff() const { return cutoff[0] != Const::MISS; }
  /** Code of no data, -1 for none. */
  void setCutBase(int v) { cutbase = v; }
  [[nodiscard]] int getCutBase() const { return cutbase; }
  /** Interpolate between the pixels of a data image in getPixel(float, float). */
  void setPixAve(bool v) { pix_ave = v; }
  [[nodiscard]] bool getPixAve() const { return pix_ave; }

  // Pixels. Reading off the image gives 0.

  /** Raw value; remembers the place. */
  [[nodiscard]] int getVal(int x, int y) const;
  /** Raw value at the nearest pixel. */
  int getVal(const EarthPoint& p);
  /** Value for a device: raw, or at 8 bits the value that the device gave the colour. At 16 bits
   * the most significant byte comes first, whatever the byte order: deliberate. */
  [[nodiscard]] int getPixel(int x, int y) const;
  /** The sampling rule of each remap and zoom: a data image is interpolated within a level class,
   * any other gives its nearest pixel. 0 off the image, and on the last column and row: deliberate.
   */
  [[nodiscard]] int getPixel(float x, float y) const;
  [[nodiscard]] int getPixel(const GridPoint& g) const;
  int getPixel(const Point& p);
  int getPixel(const EarthPoint& p);
  /** Stores v, cut to the width of a pixel. */
  int setPixel(int x, int y, int v);
  /** Rewrites the 8-bit pixel read last. @return 1, also for other widths, which are left alone; 0
   *  without a store or a pixel */
  int setPixel(int v);
  int setPixel(const GridPoint& g, int v);
  /** The pixel has the transparent value or a transparent colour. */
  [[nodiscard]] bool isPixelTrans(int x, int y) const;
  /** Colour of a pixel; black for a data image. @return the raw value, 0 for a data image */
  int getRGB(int x, int y, RGB& rgb) const;

  // Physical values of the 256 codes of an 8-bit image.

  /** An unset table. @return 1; 0 unless the depth is 8 */
  int allocValues();
  [[nodiscard]] bool hasValues() const { return !values.empty(); }
  int setValue(int i, float v);
  /** The entries from 0 on. */
  int setValues(const FloatArray& v);
  [[nodiscard]] float getValue(int i) const;
  /** Value of a pixel; its code where there is no table. */
  [[nodiscard]] float getValue(int x, int y) const;
  [[nodiscard]] float getValue(float x, float y) const;
  [[nodiscard]] float getValue(const GridPoint& g) const;
  float getValue(const Point& p);
  float getValue(const EarthPoint& p);
  /** Code of a physical value: the class from table entry i up to i + 1; 0 below the first entry,
   * 255 where there is none. Without a table the value itself within 0 to 255. */
  [[nodiscard]] int getIndex(float v) const;
  int setValue(int x, int y, float v) { return setPixel(x, y, getIndex(v)); }

  // Earth binding.

  [[nodiscard]] const Domain& getDomain() const { return domain; }
  int getDomain(Domain& d) const;
  [[nodiscard]] DomainVal getDomainVal() const;
  [[nodiscard]] int getDomainProj() const;
  [[nodiscard]] float getPLat() const;
  [[nodiscard]] float getPLon() const;
  [[nodiscard]] float getDx() const;
  [[nodiscard]] float getDy() const;
  [[nodiscard]] Rect getLimits() const;
  /** The transformations of Domain; they bring the longitude of an earth point into -180 to 180. */
  int tran(EarthPoint& e, Point& p);
  int tran(const Point& p, EarthPoint& e);
  int tran(const GridPoint& g, Point& p) const;
  int tran(const Point& p, GridPoint& g) const;
  int tran(EarthPoint& e, GridPoint& g);
  int tran(const GridPoint& g, EarthPoint& e);

  // Output for people.

  void print() const;
  void printInt() const;
  void printValues() const;
  void printColors() const;
  /** Counts the codes. @return 1; 0 unless the depth is 8 */
  int printHist() const;
  /** Code and value at a place. @return 1 */
  int printData(const EarthPoint& p);

 private:
  [[nodiscard]] long find(int x, int y, int bytes) const;
  ImageColor* entry(int i);
  [[nodiscard]] int sample(float x, float y) const;

  std::vector<unsigned char> data;
};

}  // namespace ZQV
