#pragma once

namespace ZQV {

class ColorMap;
class Domain;
class EarthPoint;
class GeomBox;
class Grid;
class Image;

/** Operations on whole images. A destination may be the source itself. They return 1, or 0 where
 * they can't be done, and never report. */
class ImageMath {
 public:
  /** Cuts out a box, in pixels; off the source there is 0. The destination has no colour table: the
   *  caller attaches one. */
  static int clip(const Image& source, const GeomBox& box, Image& destination);
  /** Resamples onto a domain. @return 1; 0 if the domain has no projection or is too large */
  static int remap(const Image& source, const Domain& domain, Image& destination);
  /** True colour to a table of the exact colours; those past 256 become index 0. */
  static int toIndex(const Image& source, int bits, Image& destination);
  static int toIndex(const Image& source, Image& destination);
  /** True colour to the nearest colours of a table. */
  static int toIndex(const Image& source, const ColorMap& map, Image& destination);
  /** To 256 levels of gray. */
  static int toGray(const Image& source, Image& destination);
  /** Indexed to true colour of 24 bits, or of the bits given. */
  static int toTrueColor(const Image& source, int bits, Image& destination);
  static int toTrueColor(const Image& source, Image& destination);
  /** Makes equal entries of the colour table one. The count stays. */
  static int compressColor(Image& image);
  /** Stamps the pixels of overlay that aren't 0 onto the image. */
  static int merge(Image& image, const Image& overlay);
  /** Clears what lies outside a box of latitude and longitude.
   *  @param p1  north-west corner
   *  @param p2  south-east corner; west of p1 when the box crosses the date line */
  static int blank(Image& image, const EarthPoint& p1, const EarthPoint& p2);
  /** Clears what lies beyond an angle, degrees, from the projection's pole point. */
  static int blank(Image& image, float radius);
  /** Keeps the pixels whose value is above that of the grid at their place; others become 0. */
  static int maskLesser(Image& destination, const Image& source, Grid& grid);
  /** Keeps the pixels whose value is below that of the grid at their place; others become 0. */
  static int maskGreater(Image& destination, const Image& source, Grid& grid);
};

}  // namespace ZQV
