#pragma once

#include "PageDevice.h"

namespace ZQV {

/** Writes a plain-text record of the drawing calls, one a line, headed by "ZQVMETA2". Attributes
 * are recorded when they change. The page is 1 by 1 unless a size is given. */
class MetaFile : public PageDevice {
 public:
  MetaFile();
  MetaFile(const MetaFile&) = delete;
  MetaFile& operator=(const MetaFile&) = delete;
  ~MetaFile() override { MetaFile::close(); }

  int init() override;
  /** "FILE", ",FILE" or "file=FILE", and "sz=WxH". */
  int setParam(const char* params) override;
  int open() override;
  int close() override;
  int setColor(int element, int value) override;
  /** A width of 0 or less becomes 1.0. A width of exactly 1.0 counts for the line whatever the
   * element is, and no other width of the line is recorded: deliberate. */
  int setLineWidth(int element, float w) override;
  int setLineStyle(int element, int style) override;
  int setFillStyle(int element, int style) override;
  int drawLine(int element, float x1, float y1, float x2, float y2) override;
  int drawLine(int element, const Points& points) override;
  int drawFill(int element, const Points& points) override;
  using PageDevice::drawImage;
  int drawImage(Image& image, float px, float py) override;
  int setImageAlign(int horizontal, int vertical) override;
  int setFont(const char* font) override;
  int setTextAlign(int horizontal, int vertical) override;
  int drawText(const Point& p, const char* text) override;
  using PageDevice::setClip;
  int setClip(float x1, float y1, float x2, float y2) override;
  int message(const char* text) override;

 private:
  void putRecord(const char* code, int value);
  void putWidth(const char* code, float w);
  void putPoints(const char* code, const Points& points);
};

}  // namespace ZQV
