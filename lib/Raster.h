#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "ScreenDevice.h"

namespace ZQV {

/** The device that paints in memory, for pictures from scripts: it needs no display and no library.
 * Polygons, thin lines, stipples and clips follow the pixel rules of X, so that its picture is that
 * of a window. Pixels are 0x00rrggbb. Device fonts and events it has none. */
class Raster : public ScreenDevice {
 public:
  Raster() { Raster::init(); }
  ~Raster() override = default;

  int init() override;
  int setParam(const char* params) override;
  int open() override;
  int close() override;
  /** "raster,WIDTHxHEIGHT\n" */
  int getDevice(String& out) override;
  /** A new size; what was drawn stays in the upper left corner. @return 1; 0 if it can't be had */
  int resize(float w, float h) override;
  int update() override { return opened ? 1 : 0; }
  int clearRect(const Rect& rect) override;
  int allocColor(float r, float g, float b) override;
  int setColor(int element, int value) override;
  int setLineWidth(int element, float w) override;
  int setLineStyle(int element, int style) override;
  int setFillStyle(int element, int style) override;
  int drawLine(int element, float x1, float y1, float x2, float y2) override;
  int drawLine(int element, const Points& points) override;
  int drawFill(int element, const Points& points) override;
  int getImage(Image& image) override;

  // Cells: the many small polygons of a radar's data, their corners placed ahead.

  /** Takes corners on the page to pixels, in place.
   *  @param window  on the page; cells beside it aren't seen */
  void placeCells(float* px, float* py, int n, const Rect& window);
  /** Finds the cells of a row, each between the two corners of a side and those of the next side,
   * that cover the centre of a pixel.
   *  @param seen  takes their numbers, room for num
   *  @return how many */
  int findCells(const float* px, const float* py, int num, int* seen) const;
  /** Fills the cell between a side and the next. */
  void fillCell(const float* px, const float* py);

  // Without a window there is nobody to wait for, and without fonts no text.
  int manage() override { return opened ? 1 : 0; }
  int unmanage() override { return 1; }
  int addCallback(const char* type, Listener* listener, const void* client) override;
  int doCallback(const char* type, const char* data) override;
  void callback(const char* type, const char* data, const void* client) override;
  int setFont(const char* font) override;
  int drawText(const Point& p, const char* text) override;
  int setCursor(int cursor) override;
  int bell(int volume) override;

 protected:
  unsigned long createPixmap() override;
  void freePixmap(unsigned long pixmap) override;
  void copyPixmap(unsigned long to, unsigned long from) override;
  void fillPixmap(unsigned long pixmap, int color) override;
  void applyClip() override { painted = 0; }
  int paintImage(Image& image, const ImagePlace& place) override;
  void showTitle(const char* text) override;

 private:
  /** How an element is drawn. */
  struct Pen {
    uint32_t color = 0;
    int width = 0;
    int style = 1;
    int fill = 0;
  };
  struct Pixmap {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;
  };
  /** What is painted on: the pixels of a pixmap within the clip, limits not included at the end. */
  struct Target {
    uint32_t* pixels = nullptr;
    int stride = 0;
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;
  };
  struct Vertex {
    int x = 0;
    int y = 0;
  };
  /** An edge of a polygon on its way down, with the first pixel to the right of it in each row. */
  struct Edge {
    int top = 0;
    int bottom = 0;  ///< not included
    int x = 0;
    int error = 0;  ///< of x, above 0 counts the edge one pixel further right
    int step = 0;
    int rest = 0;
    int height = 1;
  };

  Pen& pen(int element);
  [[nodiscard]] const Target& target();
  [[nodiscard]] Target unclipped();
  [[nodiscard]] Pixmap* find(unsigned long pixmap);
  static bool setEdge(const Vertex& a, const Vertex& b, const Target& t, Edge& edge);
  static void advance(Edge& edge);
  static void paintSpan(const Target& t, const Pen& p, int y, int x1, int x2);
  static void fillBox(const Target& t, const Pen& p, const Vertex& a, const Vertex& b);
  static void fillRow(const Target& t, const Pen& p, Four::Ints vx, Four::Ints vy, int row);
  static void fillCorners(const Target& t, const Pen& p, Four::Ints vx, Four::Ints vy, int high,
                          int low);
  static void fillFour(const Target& t, const Pen& p, const float* px, const float* py);
  static void fillQuad(const Target& t, const Pen& p, const Vertex* v, int high, int low);
  static void fillSmall(const Target& t, const Pen& p, const Vertex* v, int n);
  void fillLarge(const Target& t, const Pen& p, const Vertex* v, size_t n);
  static void thinLine(const Target& t, const Pen& p, const Vertex& a, const Vertex& b, bool last,
                       int& dash);
  void wideLine(const Target& t, const Pen& p, bool text);
  static void fillConvex(const Target& t, const Pen& p, const double (*v)[2], int n);
  static void wideSegment(const Target& t, const Pen& p, const double* a, const double* b,
                          double before, double after);
  static void wideJoin(const Target& t, const Pen& p, const Vertex& a, const Vertex& b,
                       const Vertex& c, bool bevel);
  static void wideDashes(const Target& t, const Pen& p, const Vertex& a, const Vertex& b,
                         double& done);
  void strokeLine(int element);

  Target clipped;               ///< of the pixmap painted on
  Four::Floats cell_limits{};   ///< of what is seen: right, left with its sign turned, and so on
  unsigned long painted = 0;    ///< that pixmap, 0 if clipped has to be worked out anew
  std::vector<Pixmap> pixmaps;  ///< by their number less 1
  std::array<Pen, 5> pens;      ///< by element, 0 for what is none
  std::vector<Vertex> vertices;
  std::vector<Edge> edges;
  std::vector<size_t> active;
};

}  // namespace ZQV
