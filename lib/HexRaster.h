#pragma once

namespace ZQV {

class GeomBox;
class Image;
class PageBuffer;

/** An image as rows of hexadecimal digits, as PostScript and the metafile hold it: one pixel for
 * each unit of the clip box, from the top row down, with white around the image. */
class HexRaster {
 public:
  enum Form {
    GRAY,     ///< one pair of digits a pixel, 00 or FF: only pure white is white, deliberately
    COLOR,    ///< three pairs a pixel
    METAFILE  ///< three pairs a pixel, but one in the white rows above the image: deliberate
  };

  /** Finds the size of the raster of a clip box. @return 1; 0 if it is empty or above 128 MB */
  static int getSize(const GeomBox& clip, int& columns, int& rows);
  /** Writes the rows.
   *  @param clip  the box that the raster covers
   *  @param x,y   page position of the image's upper left corner; what lies outside the box is cut
   *  @return 1; 0 without pixels or by getSize(), with nothing written */
  static int write(PageBuffer& out, const Image& image, const GeomBox& clip, float x, float y,
                   Form form);
};

}  // namespace ZQV
