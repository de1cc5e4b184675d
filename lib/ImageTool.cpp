#include "ImageTool.h"

#include "ColorFill.h"
#include "ColorMap.h"
#include "Const.h"
#include "Grid.h"
#include "Image.h"
#include "RGB.h"

namespace ZQV {

namespace {

constexpr int NUM_CODES = 256;

/** A colour for each code of a data image with values. */
void addValueColors(Image& image, const ColorMap& map, const ColorFill& fill) {
  image.allocColors(NUM_CODES);
  for (int i = 0; i < NUM_CODES; i++) {
    RGB rgb;
    const float v = image.getValue(i);
    if (!fill.areValuesSet()) {
      map.get(fill.getColor(i), rgb);
    } else if (v != Const::FMISS) {
      map.get(fill.getColor(v), rgb);
    }
    image.setColor(i, rgb);
  }
}

/** A colour for each class of the fill. */
void addClassColors(Image& image, const ColorMap& map, const ColorFill& fill) {
  image.allocColors(fill.getNum());
  for (int i = 0; i < fill.getNum(); i++) {
    if (ColorMap::isColor(fill.getColor(i))) {
      RGB rgb;
      map.get(fill.getColor(i), rgb);
      image.setColor(i, rgb);
    }
  }
}

}  // namespace

int ImageTool::addColor(Image& image, const ColorMap& map, const ColorFill& fill) {
  const bool data = image.getColorType() == Image::DATA;
  if (data && image.hasValues()) {
    addValueColors(image, map, fill);
  } else if (data || (image.getColorType() == Image::INDEXED && !image.hasColors())) {
    addClassColors(image, map, fill);
  } else {
    return 0;
  }
  image.setColorType(Image::INDEXED);
  return 1;
}

int ImageTool::toGrid(Grid& grid, const Image& image) {
  grid.init();
  grid.setSize(image.getWidth(), image.getHeight());
  grid.setInfo(image.getInfo());
  grid.setDate(image.getDate());
  grid.setDomain(image.getDomain());
  if (grid.allocData() == 0) return 0;
  for (int x = 0; x < image.getWidth(); x++) {
    for (int y = 0; y < image.getHeight(); y++) grid.setValue(x, y, image.getValue(x, y));
  }
  return 1;
}

}  // namespace ZQV
