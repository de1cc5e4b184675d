#pragma once

#include <string>

#include "Const.h"
#include "Image.h"
#include "RadarPlot.h"

namespace ZQV {

class ImageFile;

/** Draws an image on the domain of the plot: resampled, coloured by a fill list unless it has
 * colours of its own, between the maps under and over it, with its labels. */
class ImagePlot : public RadarPlot {
 public:
  ImagePlot() { ImagePlot::init(); }
  /** @param params  as setParam() */
  explicit ImagePlot(const char* params);
  ImagePlot(const ImagePlot&) = delete;
  ImagePlot& operator=(const ImagePlot&) = delete;
  ~ImagePlot() override = default;

  int init() override;
  /** The domain of the current file. @return 1; 0 if it can't be read or has none, and the domain
   * stays */
  int getDomain(Domain& domain) override;
  /** Takes the resources "input", "in_file" and "num_hour". @return 1 */
  int setFile() override;
  /** Type of file, one of those of ImageFile::getType(), for what doesn't tell it by its content.
   * @return 1 */
  int setInput(const char* name) override;
  using RadarPlot::setFilename;
  int setFilename() override;
  /** Comma-separated items, in any case: fill, fi, in, nc, tz (small letters), ct, cof, zoom, map,
   * over, bar, pixoff, minlon, maxlon, cutoff. @return 1 */
  int setParam(const char* text) override;
  /** Draws the file, the latest if none was chosen. @return 1; 0 with a warning if it can't be
   * opened */
  int draw(Plot& plot) override;
  int print() override;
  /** Answers "QueryLoc", "LAT,LON", with the image's code and value at that place. */
  void callback(const char* name, const char* data, const void* source) override;

  int setPath(const char* path) { return filename.setPath(path); }
  int setMap(int flag);
  /** Interpolate between the pixels of a data image (1, as at the start) or take the nearest (0).
   * @return 1 */
  int setPixAve(int flag);
  /** Draws a file whose type shows by itself. @return as draw(Plot&) */
  int draw(Plot& plot, const char* name);
  /** Draws an image with maps and labels. @param source  gets the level classes of "cutoff".
   *  @return 1 */
  int draw(Plot& plot, Image& source);
  /** Draws the image alone. An image that lies nowhere is drawn as it is, from the upper left
   * corner of the plot.
   *  @return 1; 0 if nothing is drawn */
  int drawImage(Plot& plot, Image& source);

 private:
  int openFile(ImageFile& file) const;
  int drawFile(Plot& plot, ImageFile& file);
  int place(Plot& plot, const Image& source);

  bool map = false;
  int over = 0;  ///< taken and not used, as fill, zoom, pix_off, min_lon and max_lon
  int fill = 0;
  float zoom = 1.0F;
  int pix_off = 0;
  int pix_ave = 1;
  std::string cutoff;  ///< level classes as Image::setCutoff() reads them, at most 19 characters
  float min_lon = Const::FMISS;
  float max_lon = Const::FMISS;
  int bar = 0;
  Image image;  ///< what was drawn last
};

}  // namespace ZQV
