#pragma once

namespace ZQV {

class ColorFill;
class ColorMap;
class Grid;
class Image;

/** Conversions of images. */
class ImageTool {
 public:
  /** Gives an image that has no colours a table of them. Of a data image with physical values each
   * code gets the colour of its value, or, where the fill has no thresholds, of its own number; an
   * unset value is black, a class that is off transparent. Of a data image without values, and of
   * an indexed one, code i gets the colour of class i, black where that is off. Other images stay.
   *  @return 1; 0 if the image stays */
  static int addColor(Image& image, const ColorMap& map, const ColorFill& fill);
  /** Makes a field of the image's physical values, on its domain.
   *  @return 1; 0 if the image is empty or too large */
  static int toGrid(Grid& grid, const Image& image);
};

}  // namespace ZQV
