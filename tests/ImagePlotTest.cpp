// Images and mosaics: their colours, and where they come to lie in the picture.

#include "ImagePlot.h"

#include <cmath>
#include <functional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ColorFill.h"
#include "ColorMap.h"
#include "Grid.h"
#include "Image.h"
#include "ImageFile.h"
#include "ImageTool.h"
#include "MetaTest.h"
#include "MosaicMaker.h"
#include "Picture.h"
#include "Plot.h"
#include "RGB.h"
#include "Road.h"

namespace ZQV {
namespace {

using testing::HasSubstr;

constexpr int red = 0xff0000;
constexpr int lime = 0x00ff00;
constexpr int blue = 0x0000ff;
constexpr int gray = 0x808080;

/** 301 by 201 points of 0.1 degrees around 39 N 97 W, which is gray but for four corners and the
 * middle. */
Image markedImage() {
  const int colors[] = {0, gray, red, lime, blue, 0xffff00, 0xff00ff};
  Domain domain;
  domain.set("latlon,39,-97,301,201,0.1,0.1");
  Image image;
  image.set(domain, 8);
  image.allocColors(7);
  image.allocData();
  for (int i = 0; i < 7; i++) {
    image.setColor(i, static_cast<float>(colors[i] >> 16) / 255.0F,
                   static_cast<float>(colors[i] >> 8 & 255) / 255.0F,
                   static_cast<float>(colors[i] & 255) / 255.0F);
  }
  const auto mark = [](int x, int y) {
    if (std::abs(x - 150) <= 10 && std::abs(y - 100) <= 10) return 6;
    const bool corner = (x < 12 || x > 288) && (y < 12 || y > 188);
    return corner ? 2 + (x > 150 ? 1 : 0) + (y > 100 ? 2 : 0) : 1;
  };
  for (int y = 0; y < 201; y++) {
    for (int x = 0; x < 301; x++) image.setPixel(x, y, mark(x, y));
  }
  return image;
}

}  // namespace

// Corners and middle of the image in the plane, km, and of the page, as PROJ 9 has them:
//   echo "-112 49" | cs2cs +proj=longlat +R=6371220 +to +proj=lcc +lat_1=33 +lat_2=45
//                          +lat_0=89.999999 +lon_0=-97 +R=6371220
// with +proj=stere +lat_0=90 +lat_ts=60 +lon_0=-105 and +proj=merc +lon_0=-90 for the others; upper
// left, upper right, lower left, lower right, middle (39 N 97 W), page (38 N 95 W).
TEST(ImagePlotTest, RedrawnWhereProjPutsIt) {
  struct Row {
    const char* domain;
    double spacing;
    double places[6][2];
  };
  const Row rows[] = {{"lc:40:-97:33:45,38,-95,301,201,.15,.15",
                       15,
                       {{-1100.6636, -6607.5453},
                        {1100.6636, -6607.5453},
                        {-1465.9451, -8800.4516},
                        {1465.9451, -8800.4516},
                        {0.0, -7810.2084},
                        {174.3079, -7918.8866}}},
                      {"ps:90:-105,38,-95,301,201,.2,.2",
                       20,
                       {{-541.7168, -4411.9292},
                        {1736.8241, -4091.7011},
                        {-853.4599, -6950.8729},
                        {2736.3185, -6446.3625},
                        {789.2081, -5615.5077},
                        {1006.9135, -5710.4902}}},
                      {"me:0:-90,38,-95,301,201,.17,.17",
                       17,
                       {{-2446.3729, 6268.0564},
                        {889.5901, 6268.0564},
                        {-2446.3729, 3371.9852},
                        {889.5901, 3371.9852},
                        {-778.3914, 4716.5510},
                        {-555.9938, 4574.4595}}}};
  const int colors[] = {red, lime, blue, 0xffff00, 0xff00ff};
  constexpr int width = 900;
  constexpr int height = 600;
  const TempDir dir;
  ASSERT_EQ(ImageFile().write(dir.at("a.png").c_str(), markedImage()), 1);
  for (const Row& row : rows) {
    const Image out = drawPicture(
        dir, std::string("-in img a.png -pa full,nobord -pd ") + row.domain, width, height);
    ASSERT_EQ(out.getWidth(), width);
    for (int i = 0; i < 5; i++) {
      // 300 by 200 cells over the page, which has the plot's centre in its middle.
      const double pixel = 300 * row.spacing / width;
      const double x = width / 2.0 + (row.places[i][0] - row.places[5][0]) / pixel;
      const double y = height / 2.0 - (row.places[i][1] - row.places[5][1]) / pixel;
      const double right = i == 1 || i == 3 ? 1 : -1;
      const double down = i == 2 || i == 3 ? 1 : -1;
      double near = 1e9;
      double beyond = -1e9;
      double sum_x = 0;
      double sum_y = 0;
      int n = 0;
      for (int py = 0; py < height; py++) {
        for (int px = 0; px < width; px++) {
          if (colorAt(out, px, py) != colors[i]) continue;
          near = std::min(near, std::max(std::fabs(px - x), std::fabs(py - y)));
          beyond = std::max(beyond, (px - x) * right + (py - y) * down);
          sum_x += px;
          sum_y += py;
          n++;
        }
      }
      ASSERT_GT(n, 100) << row.domain << " mark " << i;
      EXPECT_LE(near, 1.0) << row.domain << " mark " << i << " at " << x << "," << y;
      if (i < 4) {
        EXPECT_LE(beyond, 1.0) << row.domain << " corner " << i;
      } else {
        EXPECT_NEAR(sum_x / n, x, 1.0) << row.domain;
        EXPECT_NEAR(sum_y / n, y, 1.0) << row.domain;
      }
    }
  }
}

// Mosaics on a map of their own projection, 10 pixels a degree from 110 W 50 N.
TEST(ImagePlotTest, MosaicsOnTheMap) {
  const TempDir dir;
  Nowrad now;
  now.size = "100 200";  // 0.1 degrees from 50 N, around 100 W
  now.projection = "C-1.745329 0.872665 0.0 0.00174533 0.00174533";
  std::string text = now.head();
  for (int y = 0; y < 100; y++) {
    text += line(y, y >= 20 && y < 40 ? bytes({0xe0, 49, 0xe9, 29, 0xe2, 59}) : bytes({0xe0, 199}));
  }
  dir.write("now", text);
  // Three blank rows, then 100 rows of level 40 dBZ from column 1000 on and of 65 dBZ beyond 1099.
  std::string runs = bytes({0x50, '#', 0x50, '#', 0x50, '#'});
  for (int y = 0; y < 100; y++) {
    runs += bytes({0x50, '$', 249, '$', 250, '$', 250, '$', 250, 0x48, '$', 99, 0x4d, '#'});
  }
  dir.write("kav", kavouras(' ', 10, runs));
  const std::map<std::string, int> colors = radarColors();
  const std::string pages = " -pa full,nobord -pd ";
  const Image seen =
      drawPicture(dir, "-in nowrad now" + pages + "ll,45,-100,201,101,.1,.1", 800, 400);
  // Level 9 is 45 dBZ, level 2 10 dBZ; 40 pixels a degree.
  const auto at = [&](int column, int row_of) {
    // The image's own centre is half a cell off: 200 by 100 points around 100 W.
    const double lon = -100 + (column - 99.5) * 0.1;
    const double lat = 50 - row_of * 0.1;
    return colorAt(seen, 400 + (lon + 100) * 40, 200 - (lat - 45) * 40);
  };
  EXPECT_EQ(at(52, 30), colors.at("red"));
  EXPECT_EQ(at(76, 22), colors.at("red"));
  EXPECT_EQ(at(85, 38), colors.at("lblue"));
  EXPECT_EQ(at(48, 30), 0) << "-100 is off";
  EXPECT_EQ(at(60, 18), 0);
  EXPECT_EQ(at(60, 42), 0);

  const Image high = drawPicture(dir, "-in kav kav" + pages + "ll,39,-96,201,201,.3,.25", 800, 800);
  const auto kav_at = [&](double column, double row_of) {
    const double lon = -96 + (column - 1279.5) * 0.0257812;
    const double lat = 39 - (row_of - 1439.5) * 0.0171874;
    return colorAt(high, 400 + (lon + 96) * 800 / 60, 400 - (lat - 39) * 800 / 50);
  };
  EXPECT_EQ(kav_at(1050, 50), colors.at("yellow"));
  EXPECT_EQ(kav_at(1800, 50), colors.at("dgray"));
  EXPECT_EQ(kav_at(950, 50), 0);
  EXPECT_EQ(kav_at(1050, 120), 0);
}

TEST(ImagePlotTest, FilesThatCannotBeDrawnLeaveAnEmptyFrame) {
  const TempDir dir;
  dir.write("bad", "no image at all");
  const char* const rows[][2] = {
      {"img none", "ScopeView: Unable to open Image file: none\n"},
      {"now none", "ScopeView: Unable to open Nowrad file: none\n"},
      {"kav none", "ScopeView: Unable to open Kavrad file: none\n"},
      {"img bad", "ScopeView: Unable to open Image file: bad\n"},
      {"now bad", ""},
      {"kav bad", ""},
  };
  for (const auto& [args, warning] : rows) {
    const ProgramRun run =
        runScopeview(dir, std::string("-in ") + args + " -de ps,out.ps -dr plot,data");
    EXPECT_EQ(run.status, 0) << args;
    EXPECT_EQ(run.err, warning) << args;
    EXPECT_THAT(dir.read("out.ps"), testing::Not(HasSubstr("picstr"))) << args;
  }
}

namespace {

/** Draws on a metafile, on the package's own colours. */
class ImagePlotDrawTest : public MetaTest {
 protected:
  ImagePlotDrawTest() : MetaTest(",sz=600x400") {}
  /** The metafile; the labels stand at the end of standard output. */
  std::string drawn(const std::function<void(Plot&)>& draw) {
    MetaTest::drawn([&](Plot& plot) {
      draw(plot);
      plot.printLabels();
    });
    return dir.read("m");
  }
};

}  // namespace

TEST_F(ImagePlotDrawTest, WithoutADomainThePlotTakesThatOfTheImage) {
  Image image = markedImage();
  image.setInfo("Marks");
  Date date;
  date.set("202105031230");
  image.setDate(date);
  const std::string text = drawn([&](Plot& plot) {
    ImagePlot img("bar,cof=red,blue");
    EXPECT_EQ(img.draw(plot, image), 1);
    EXPECT_EQ(plot.getProj(), static_cast<int>(Domain::LATLON));
    EXPECT_TRUE(plot.isDateSet());
  });
  EXPECT_THAT(text, HasSubstr("\nI\n"));
  EXPECT_THAT(out, HasSubstr("Marks"));
  EXPECT_THAT(out, HasSubstr("3 MAY 21"));
}

TEST_F(ImagePlotDrawTest, AnswersWithCodeAndValueOfThePlace) {
  Image image = markedImage();
  image.freeColors();
  image.setColorType(Image::DATA);
  image.allocValues();
  for (int i = 0; i < 7; i++) image.setValue(i, static_cast<float>(i) * 1.5F);
  Domain domain;
  domain.set("latlon,39,-97,301,201,0.1,0.1");
  ImagePlot img("fill=hat,zoom=2,pixoff=3,cutoff=0:2:3");
  drawn([&](Plot& plot) {
    plot.setPanel(domain);
    EXPECT_EQ(img.drawImage(plot, image), 1);
  });
  testing::internal::CaptureStdout();
  img.callback("QueryLoc", "48.5,-111.5", nullptr);
  img.callback("QueryLoc", "39.0,-97.0", nullptr);
  img.callback("QueryLoc", "nowhere", nullptr);
  img.callback("Redraw", "39.0,-97.0", nullptr);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "ImagePlot value: 2 3.0\nImagePlot value: 6 9.0\n");
  EXPECT_EQ(image.getNumCut(), 2);
}

TEST_F(ImagePlotDrawTest, ReadsFilesAndTheirDomains) {
  Image image = markedImage();
  image.setInfo("From a file");
  ASSERT_EQ(ImageFile().write(dir.at("a.gif").c_str(), image), 1);
  image.freeColors();
  image.setColorType(Image::DATA);
  ASSERT_EQ(ImageFile().write(dir.at("a.img").c_str(), image), 1);
  ImagePlot img;
  Domain domain;
  EXPECT_EQ(img.getDomain(domain), 0) << "no file yet";
  for (const char* name : {"a.gif", "a.img"}) {
    img.setFilename(dir.at(name).c_str());
    img.setInput("png");  // a wrong type, and the content tells the right one
    EXPECT_EQ(img.getDomain(domain), 1) << name;
    EXPECT_EQ(domain.getNx(), 301) << name;
    EXPECT_THAT(drawn([&](Plot& plot) {
                  plot.setPanel(domain);
                  EXPECT_EQ(img.draw(plot), 1) << name;
                }),
                HasSubstr("\nI\n"))
        << name;
  }
  EXPECT_THAT(drawn([&](Plot& plot) {
                plot.setPanel(domain);
                EXPECT_EQ(img.draw(plot, dir.at("none").c_str()), 0);
              }),
              testing::Not(HasSubstr("\nI\n")));
}

TEST(ImageToolTest, ColoursByValueByCodeAndByClass) {
  ColorMap map;
  for (const char* name : {"red", "green", "blue"}) {
    map.add(name, *name == 'r' ? 1.0F : 0.0F, *name == 'g' ? 1.0F : 0.0F,
            *name == 'b' ? 1.0F : 0.0F);
  }
  constexpr float off = -1.0F;
  struct Row {
    const char* what;
    const char* fill;
    int type;
    bool values;
    bool colors;
    int result;
    int num;
    float reds[4];
  };
  const Row rows[] = {
      {"thresholds", "0:off,10:red,20:blue", Image::DATA, true, false, 1, 256, {off, off, 1, 0}},
      {"codes", "blue,red", Image::DATA, true, false, 1, 256, {0, 1, off, off}},
      {"classes", "0:off,10:red,20:blue", Image::DATA, false, false, 1, 3, {0, 1, 0, 0}},
      {"indexed", "red,off", Image::INDEXED, false, false, 1, 2, {1, 0, 0, 0}},
      {"own colours", "red", Image::INDEXED, false, true, 0, 4, {0.5F, 0, 0, 0}},
      {"true colour", "red", Image::TRUE_COLOR, false, false, 0, 0, {0, 0, 0, 0}},
  };
  for (const Row& row : rows) {
    Image image;
    image.set(2, 2, 8);
    image.setColorType(row.type);
    image.allocData();
    if (row.values) {
      image.allocValues();
      for (int i = 0; i < 3; i++) image.setValue(i, static_cast<float>(i * 9 - 1));
      image.setValue(2, 15.0F);
      image.setValue(3, Const::FMISS);
    }
    if (row.colors) {
      image.allocColors(4);
      image.setRed(0, 0.5F);
    }
    ColorFill fill;
    fill.set(map, row.fill);
    EXPECT_EQ(ImageTool::addColor(image, map, fill), row.result) << row.what;
    EXPECT_EQ(image.getNumColors(), row.num) << row.what;
    EXPECT_EQ(image.getColorType(), row.result != 0 ? static_cast<int>(Image::INDEXED) : row.type);
    for (int i = 0; i < 4; i++) EXPECT_EQ(image.getRed(i), row.reds[i]) << row.what << " " << i;
  }
}

TEST(ImageToolTest, FieldOfTheValues) {
  Image image = markedImage();
  image.setInfo("Marks");
  image.allocValues();
  image.setValue(2, -7.5F);
  Grid grid;
  EXPECT_EQ(ImageTool::toGrid(grid, image), 1);
  EXPECT_EQ(grid.getNx(), 301);
  EXPECT_EQ(grid.getNy(), 201);
  EXPECT_STREQ(grid.getInfo(), "Marks");
  EXPECT_EQ(grid.getProj(), static_cast<int>(Domain::LATLON));
  EXPECT_EQ(grid.getValue(3, 11), -7.5F);
  EXPECT_EQ(grid.getValue(3, 12), Const::FMISS) << "a code without value";
  EXPECT_EQ(ImageTool::toGrid(grid, Image()), 0);
}

}  // namespace ZQV
