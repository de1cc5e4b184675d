#pragma once

#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "Image.h"
#include "ImageFile.h"
#include "RGB.h"
#include "Run.h"

namespace ZQV {

/** A picture of the program, without map and labels, that fills a page of width by height. */
inline Image drawPicture(const TempDir& dir, const std::string& args, int width, int height) {
  const ProgramRun run =
      runScopeview(dir, args + " -de raster -ou png:out.png -dr plot,data -ge " +
                            std::to_string(width) + "x" + std::to_string(height));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  Image image;
  EXPECT_EQ(ImageFile().read(dir.at("out.png").c_str(), image), 1);
  return image;
}

/** Colour of a pixel as a metafile has it. */
inline int colorAt(const Image& image, double x, double y) {
  RGB rgb;
  image.getRGB(static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y)), rgb);
  const auto channel = [](float v) { return static_cast<int>(std::lround(v * 255.0F)); };
  return channel(rgb.red) << 16 | channel(rgb.grn) << 8 | channel(rgb.blu);
}

}  // namespace ZQV
