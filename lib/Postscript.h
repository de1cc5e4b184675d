#pragma once

#include "PageDevice.h"

namespace ZQV {

/** Writes one page of PostScript with a small prolog of abbreviations. Coordinates are points from
 * the lower left corner. Text arrives as lines of the stroke font, so that the page has no fonts.
 */
class Postscript : public PageDevice {
 public:
  Postscript();
  Postscript(const Postscript&) = delete;
  Postscript& operator=(const Postscript&) = delete;
  ~Postscript() override { Postscript::close(); }

  int init() override;
  /** File name, then "port", "land", "eps", "noeps", "color", "gray", "scale=", "lwidth=", "sz=w:h"
   * in inches or a paper's name. "color" also sets inverse, so that a white background turns out as
   *  paper: deliberate. */
  int setParam(const char* params) override;
  int open() override;
  int close() override;
  /** Screen pixels become points: the values are multiplied by 0.72. */
  int setSize(float w, float h) override;
  int setOffset(float dx, float dy) override;
  /** A width of 0 becomes 1.0. */
  int setLineWidth(int element, float w) override;
  int drawLine(int element, float x1, float y1, float x2, float y2) override;
  int drawLine(int element, const Points& points) override;
  /** All fills are solid. */
  int drawFill(int element, const Points& points) override;
  using PageDevice::drawImage;
  int drawImage(Image& image, float px, float py) override;
  using PageDevice::setClip;
  int setClip(float x1, float y1, float x2, float y2) override;
  /** Writes a comment. */
  int message(const char* text) override;
  /** Writes the colour of a device value. */
  int outputColor(int value);
  int setFocus() { return 1; }
  int unsetFocus() { return 1; }

 private:
  void setPaper(float w, float h);
  void putPoint(float px, float py, const char* verb);
  void putPath(const Points& points);
  void putPen(int element);

  int append = 0;
  int eps = 0;
  int orient = 0;
};

}  // namespace ZQV
