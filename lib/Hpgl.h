#pragma once

#include "PageDevice.h"

namespace ZQV {

/** Writes a plotter file of lines and filled polygons, plain or within a PCL print job. There are
 * no colours, no texts and no images in it. One inch is 1015 plotter units. */
class Hpgl : public PageDevice {
 public:
  Hpgl();
  Hpgl(const Hpgl&) = delete;
  Hpgl& operator=(const Hpgl&) = delete;
  ~Hpgl() override { Hpgl::close(); }

  int init() override;
  /** File name, then "port", "land", "pcl", "nopcl", "lj", "color", "gray", "scale=", "rot=",
   * "lwidth=", "sz=w:h" in inches, a paper's name or "roll=". */
  int setParam(const char* params) override;
  int open() override;
  int close() override;
  int setSize(float w, float h) override;
  int setOffset(float dx, float dy) override;
  int drawLine(int element, float x1, float y1, float x2, float y2) override;
  int drawLine(int element, const Points& points) override;
  int drawFill(int element, const Points& points) override;
  using PageDevice::drawImage;
  /** Allocates the palette and writes nothing. @return 1; 0 for an empty image */
  int drawImage(Image& image, float px, float py) override;
  using PageDevice::setClip;
  int setClip(float x1, float y1, float x2, float y2) override;
  int message(const char* text) override;

 private:
  void putPen(int element);
  void putWidth(float w);
  void putMove(const char* command, float px, float py);

  int append = 0;
  int pcl = 0;     ///< 0 plain, 1 within a PCL job, 2 the same with the page turned
  int rotate = 0;  ///< degrees
};

}  // namespace ZQV
