// The devices that paint pixels: their picture in memory, and that it is the one of a window.

#include "Raster.h"

#include <functional>
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "Image.h"
#include "ImageFile.h"
#include "NidsMaker.h"
#include "Points.h"
#include "Rect.h"
#include "Run.h"
#include "TempDir.h"
#include "XServer.h"
#include "XWindow.h"
#include "Zqv.h"

using namespace ZQV;

namespace {

Points line(std::initializer_list<std::pair<float, float>> places) {
  Points points;
  for (const auto& [x, y] : places) points.add(x, y);
  return points;
}

/** The picture as rows of "#" and "." */
std::vector<std::string> rows(Raster& raster) {
  Image image;
  raster.getImage(image);
  std::vector<std::string> out;
  for (int y = 0; y < image.getHeight(); y++) {
    std::string row;
    for (int x = 0; x < image.getWidth(); x++) row += image.getVal(x, y) != 0 ? '#' : '.';
    out.push_back(row);
  }
  return out;
}

struct RasterTest : testing::Test {
  void SetUp() override { Zqv::setMessageLevel("none"); }
  void TearDown() override { Zqv::setMessageLevel(6); }
  void open(int w, int h) {
    raster.setSize(static_cast<float>(w), static_cast<float>(h));
    ASSERT_EQ(raster.open(), 1);
  }
  Raster raster;
};

using Rows = std::vector<std::string>;

}  // namespace

TEST_F(RasterTest, APixelOnAnOutlineBelongsToWhatLiesRightOfItOrBelow) {
  open(8, 6);
  raster.drawFill(Device::FILL, line({{1, 1}, {5, 1}, {5, 4}, {1, 4}}));
  EXPECT_EQ(rows(raster),
            (Rows{"........", ".####...", ".####...", ".####...", "........", "........"}));
  raster.clear();
  // 0.5 is added and cut, so that 0.4 is pixel 0 and 0.6 is pixel 1.
  raster.drawFill(Device::FILL, line({{0.6F, 0.4F}, {6.4F, 0.4F}, {6.4F, 1.6F}, {0.6F, 1.6F}}));
  EXPECT_EQ(rows(raster)[0], ".#####..");
  EXPECT_EQ(rows(raster)[1], ".#####..");
  EXPECT_EQ(rows(raster)[2], "........");
}

TEST_F(RasterTest, ClipAndFarCoordinates) {
  open(10, 10);
  raster.setClip(2, 3, 6, 7);
  const Rect clip = raster.getClip();
  EXPECT_EQ(clip.xmax, 7.0F);
  EXPECT_EQ(clip.ymax, 8.0F);
  const float far = 30000.0F;
  raster.drawFill(Device::FILL, line({{-far, -far}, {far, -far}, {far, far}, {-far, far}}));
  for (const Device::Element element : {Device::LINE, Device::TEXT}) {
    raster.drawLine(element, -far, 5.0F, far, 5.0F);
    raster.drawLine(element, -far, -far, far, far);
  }
  Points many;
  for (int i = 0; i < 5000; i++) {
    many.add(i % 2 == 0 ? -far : far, static_cast<float>(i % 100) * 600.0F - far);
  }
  raster.drawFill(Device::FILL, many);
  raster.drawLine(Device::LINE, many);
  const Rows now = rows(raster);
  for (size_t y = 0; y < 10; y++) {
    for (size_t x = 0; x < 10; x++) {
      EXPECT_TRUE(now[y][x] == '.' || (x >= 2 && x <= 6 && y >= 3 && y <= 7)) << x << "," << y;
    }
  }
  EXPECT_EQ(now[5], "..#####...");
}

TEST_F(RasterTest, CellsPaintThePixelsOfPolygons) {
  // Rows of cells, from such as lie within a pixel to such as reach far beyond the picture, level
  // or turned, straight or shaken so that they turn over.
  constexpr int size = 200;
  constexpr int cells = 10;  // the last corners are fewer than four
  open(size, size);
  std::mt19937 random(3);
  std::uniform_real_distribution<float> place(-40.0F, size + 40.0F);
  std::uniform_real_distribution<float> offset(-1.0F, 1.0F);
  const Rect page(0, 0, size, size);
  std::set<int> colors;
  for (const Rect& clip : {page, Rect(30.4F, 41.5F, 120.6F, 99.0F), Rect(-9, 180, 20, 260)}) {
    raster.setClip(clip);
    for (const float reach : {0.4F, 1.5F, 7.0F, 40.0F, 90.0F, 90.0F, 90.0F, 900.0F, 40000.0F}) {
      const int num_rows = reach < 10.0F ? 200 : 8;
      // Each cell has its colour, so that the last one on a pixel tells itself.
      std::map<int, Points> rows_of_corners;
      raster.clear();
      for (int row = 0; row < num_rows; row++) {
        const float turn = row % 5 == 0 ? 0.0F : reach * offset(random);
        const float step = reach * offset(random);
        const float width = reach * offset(random);
        const float shake = row % 3 == 0 ? reach * offset(random) : 0.0F;
        const float x = place(random);
        const float y = place(random);
        Points& p = rows_of_corners[row * cells + 1];
        for (int k = 0; k < 2 * (cells + 1); k++) {
          const int side = k / 2;
          const auto along = static_cast<float>(side);
          const auto across = static_cast<float>(k % 2);
          p.add(x + along * step + across * turn + shake * offset(random),
                y - along * turn + across * width + shake * offset(random));
        }
        for (int k = 0; k < cells; k++) {
          const float* px = p.xs() + 2 * k;
          const float* py = p.ys() + 2 * k;
          raster.setColor(Device::FILL, row * cells + 1 + k);
          raster.drawFill(Device::FILL,
                          line({{px[0], py[0]}, {px[2], py[2]}, {px[3], py[3]}, {px[1], py[1]}}));
        }
      }
      Image expected;
      raster.getImage(expected);
      raster.clear();
      int num = 0;
      for (auto& [color, p] : rows_of_corners) {
        int seen[cells];
        raster.placeCells(p.xs(), p.ys(), p.getNum(), clip);
        const int n = raster.findCells(p.xs(), p.ys(), cells, seen);
        for (int i = 0; i < n; i++) {
          raster.setColor(Device::FILL, color + seen[i]);
          raster.fillCell(p.xs() + 2 * seen[i], p.ys() + 2 * seen[i]);
        }
        num += n;
      }
      Image got;
      raster.getImage(got);
      int differ = 0;
      for (int i = 0; i < size * size; i++) {
        differ += got.getVal(i % size, i / size) != expected.getVal(i % size, i / size) ? 1 : 0;
        colors.insert(expected.getVal(i % size, i / size));
      }
      EXPECT_EQ(differ, 0) << "reach " << reach << ", clip from " << clip.xmin;
      EXPECT_LT(num, num_rows * cells) << "those beside the picture and between pixels aren't met";
    }
  }
  EXPECT_GT(colors.size(), 1000U);
}

TEST_F(RasterTest, ColoursAreCutToBytesAndNoneIsTheBackground) {
  raster.setBackground("#102030");
  raster.setInverse(true);
  open(4, 4);
  EXPECT_EQ(raster.allocColor(1.0F, 0.5F, 0.0F), 0xff7f00);
  EXPECT_EQ(raster.allocColor(9.0F, -9.0F, NAN), 0xff0000);
  EXPECT_EQ(raster.allocColor(-1.0F, 0.0F, 0.0F), 0xffffff) << "white when inverse";
  Image image;
  raster.getImage(image);
  EXPECT_EQ(image.getVal(1, 1), 0x102030);
  EXPECT_EQ(image.getBitsPixel(), 32);
  EXPECT_EQ(image.getRedMask(), 0xff0000U);
}

TEST_F(RasterTest, FramesPlayBothWaysAndKeepTheirPictures) {
  open(4, 4);
  EXPECT_EQ(raster.incFrame(0), -1) << "there is no frame";
  // Frame i is white in column i.
  for (int i = 0; i < 3; i++) {
    EXPECT_EQ(raster.newFrame(), i);
    raster.setFrame(Raster::LAST_FRAME);
    const auto x = static_cast<float>(i);
    raster.drawFill(Device::FILL, line({{x, 0}, {x + 1, 0}, {x + 1, 4}, {x, 4}}));
  }
  raster.displayFrame(Raster::LAST_FRAME);
  const auto play = [&](int direction, int step) {
    std::string shown;
    raster.setDirection(direction);
    raster.displayFrame(0);
    for (int i = 0; i < 6; i++) {
      raster.incFrame(step);
      raster.setFrame(Raster::BASE_PIXMAP);
      shown += static_cast<char>('0' + rows(raster)[0].find('#'));
    }
    return shown;
  };
  EXPECT_EQ(play(1, 0), "120120");
  EXPECT_EQ(play(0, 0), "210210");
  EXPECT_EQ(play(3, 0), "121012") << "back and forth";
  EXPECT_EQ(play(1, -1), "210210");

  raster.displayFrame(1);
  raster.deleteFrame(1);
  EXPECT_EQ(raster.getFrame(), 1) << "the one behind is shown";
  raster.setFrame(Raster::BASE_PIXMAP);
  EXPECT_EQ(rows(raster)[0], "..#.");
  raster.deleteFrame(1);
  EXPECT_EQ(raster.getFrame(), 0);
  EXPECT_EQ(raster.deleteFrame(5), 0);
  raster.deleteFrame();
  EXPECT_EQ(raster.getNumFrames(), 0);
  EXPECT_EQ(rows(raster)[0], "....") << "cleared with the last";
  for (int i = 0; i < 130; i++) raster.newFrame();
  EXPECT_EQ(raster.getNumFrames(), 128);
  EXPECT_EQ(raster.newFrame(Raster::LAST_FRAME), 0);
}

TEST_F(RasterTest, TheRateHasSteps) {
  open(4, 4);
  const auto rate = [&](int sign, int n) {
    for (int i = 0; i < n; i++) raster.loopRate(sign);
    return raster.getDelay();
  };
  EXPECT_NEAR(rate(1, 4), 0.1F, 1e-5);
  EXPECT_NEAR(rate(1, 1), 0.05F, 1e-5);
  EXPECT_NEAR(rate(1, 9), 0.05F, 1e-5);
  EXPECT_NEAR(rate(-1, 1), 0.1F, 1e-5);
  EXPECT_NEAR(rate(-1, 11), 2.1F, 1e-4) << "by tenths up to a second";
  EXPECT_NEAR(rate(1, 1), 1.1F, 1e-4);
  EXPECT_NEAR(rate(-1, 30), 10.0F, 1e-4);
}

TEST_F(RasterTest, WhatCantBeHadIsRefused) {
  raster.setSize(16000, 16000);
  EXPECT_EQ(raster.open(), 0);
  EXPECT_EQ(raster.manage(), 0);
  EXPECT_EQ(raster.drawFill(Device::FILL, line({{0, 0}, {9, 0}, {9, 9}})), 0);
  EXPECT_EQ(raster.newFrame(-1), 0);
  Image image;
  EXPECT_EQ(raster.getImage(image), 0);
}

/** The same drawing on both devices; pixels that differ. */
class SamePicture : public testing::Test {
 protected:
  static constexpr int size = 200;

  void SetUp() override {
    Zqv::setMessageLevel("none");
    ASSERT_FALSE(server.display().empty()) << "Xvfb is needed";
    window.setParam(server.display().c_str());
    window.setSize(size, size);
    raster.setSize(size, size);
    ASSERT_EQ(window.open(), 1);
    ASSERT_EQ(raster.open(), 1);
  }
  void TearDown() override { Zqv::setMessageLevel(6); }

  /** @param expected  pixels that may differ. @return whether no more do, of a picture with content
   */
  testing::AssertionResult same(const std::function<void(Device&)>& draw, int allowed = 0) {
    Image a;
    Image b;
    for (Device* device : {static_cast<Device*>(&window), static_cast<Device*>(&raster)}) {
      device->clear();
      device->setClip(5, 5, size - 10, size - 12);
      draw(*device);
      device->getImage(device == &window ? a : b);
    }
    int differ = 0;
    int painted = 0;
    for (int y = 0; y < size; y++) {
      for (int x = 0; x < size; x++) {
        differ += a.getVal(x, y) != b.getVal(x, y) ? 1 : 0;
        painted += a.getVal(x, y) != 0 ? 1 : 0;
      }
    }
    if (differ <= allowed && painted > 100) return testing::AssertionSuccess();
    return testing::AssertionFailure() << differ << " differ of " << painted;
  }
  std::vector<Points> polygons(int num, int corners, float reach) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> place(-10.0F, size + 10.0F);
    std::uniform_real_distribution<float> offset(-reach, reach);
    std::vector<Points> list;
    for (int i = 0; i < num; i++) {
      Points p;
      const float x = place(random);
      const float y = place(random);
      for (int j = 0; j < corners; j++) p.add(x + offset(random), y + offset(random));
      list.push_back(p);
    }
    return list;
  }

  XServer server;
  XWindow window;
  Raster raster;
};

TEST_F(SamePicture, Polygons) {
  for (const int corners : {3, 4, 5, 12, 13, 60}) {
    for (const float reach : {1.5F, 6.0F, 80.0F, 20000.0F}) {
      const std::vector<Points> list = polygons(reach > 50 ? 20 : 400, corners, reach);
      EXPECT_TRUE(same([&](Device& device) {
        int color = 0;
        for (const Points& p : list) {
          color = (color + 0x35a1f7) & 0xffffff;
          device.setColor(Device::FILL, color | 1);
          device.drawFill(Device::FILL, p);
        }
      })) << corners
          << " corners, " << reach;
    }
  }
}

TEST_F(SamePicture, StipplesOfAllStyles) {
  const std::vector<Points> list = polygons(19, 4, 60.0F);
  EXPECT_TRUE(same([&](Device& device) {
    for (size_t i = 0; i < list.size(); i++) {
      device.setFillStyle(Device::FILL, static_cast<int>(i) + 1);
      device.setColor(Device::FILL, device.allocColor(1.0F, static_cast<float>(i) / 20.0F, 0.2F));
      device.drawFill(Device::FILL, list[i]);
    }
    device.setFillStyle(Device::FILL, 0);
  }));
}

TEST_F(SamePicture, ThinLinesSolidAndDashed) {
  for (int style = 1; style <= 5; style++) {
    const std::vector<Points> list = polygons(60, 7, 70.0F);
    EXPECT_TRUE(same([&](Device& device) {
      device.setLineStyle(Device::LINE, style);
      device.setLineWidth(Device::LINE, 0.0F);
      for (const Points& p : list) device.drawLine(Device::LINE, p);
      device.drawLine(Device::LINE, -300, -20, 280, 333);
    })) << "style "
        << style;
  }
}

TEST_F(SamePicture, WideLinesDifferOnOutlinesOnly) {
  for (const int style : {1, 2, 4}) {
    for (const float width : {1.0F, 2.0F, 3.0F, 6.0F}) {
      const std::vector<Points> list = polygons(8, 5, 90.0F);
      EXPECT_TRUE(same(
          [&](Device& device) {
            device.setLineStyle(Device::LINE, style);
            device.setLineWidth(Device::LINE, width);
            for (const Points& p : list) device.drawLine(Device::LINE, p);
            device.setLineWidth(Device::TEXT, width);
            for (const Points& p : list) device.drawLine(Device::TEXT, p);
            device.drawLine(Device::LINE, 20, 20, 150, 20);
            device.drawLine(Device::LINE, 20, 20, 20, 150);
          },
          size * size / 200))
          << "style " << style << " width " << width;
    }
  }
}

TEST_F(SamePicture, ImagesAlignedMaskedAndClipped) {
  Image image;
  image.set(40, 30, 8);
  image.setColorType(Image::INDEXED);
  image.allocColors(5);
  for (int i = 0; i < 5; i++) image.setColor(i, 0.2F * static_cast<float>(i), 1.0F, 0.5F);
  image.allocData();
  for (int y = 0; y < 30; y++) {
    for (int x = 0; x < 40; x++) image.setPixel(x, y, (x / 3 + y) % 5);
  }
  Image holed;
  holed.copy(image);
  holed.setColor(2, -1.0F, 0.0F, 0.0F);
  holed.setTransColor(4);
  EXPECT_TRUE(same([&](Device& device) {
    for (int h = 0; h <= 3; h++) {
      for (int v = 0; v <= 3; v++) {
        device.setImageAlign(h, v);
        device.drawImage(image, 40.0F + 45.0F * static_cast<float>(h),
                         10.4F + 48.0F * static_cast<float>(v));
        device.drawImage(holed, 12.6F + 45.0F * static_cast<float>(h),
                         33.0F + 48.0F * static_cast<float>(v));
      }
    }
    device.drawImage(image, 3, -20.0F, 150.0F);
    device.drawImage(image, 1, 180.0F, -8.0F);
  }));
}

TEST_F(SamePicture, ProductsOfTheProgram) {
  const TempDir dir;
  NidsMaker maker;
  std::vector<NidsMaker::Radial> list(360, {0.0, 1.0, std::vector<int>(230)});
  for (size_t i = 0; i < list.size(); i++) {
    list[i].ang0 = static_cast<double>(i) + 0.3;
    for (size_t j = 0; j < 230; j++) list[i].levels[j] = static_cast<int>(i * j / 97 % 16);
  }
  maker.layers = {NidsMaker::radials(list)};
  dir.write("a.nids", maker.build());
  for (const char* look :
       {"", "-cof red,blue,green:f3,cyan,lred:f0,yellow,magenta,lblue,lgreen,lcyan,gray,brown",
        "-pd lc:40:-97:33:45,35.3,-97.3,91,61,.11,.11 -pa site,dist=50:100"}) {
    const std::string args = "-in nids a.nids " + std::string(look);
    const std::string env = "DISPLAY=" + server.display();
    (void)runScopeview(dir, args + " -ou png:window.png", env);
    (void)runScopeview(dir, args + " -ou png:raster.png -de raster", env);
    Image a;
    Image b;
    ASSERT_GT(ImageFile().read(dir.at("window.png").c_str(), a), 0);
    ASSERT_GT(ImageFile().read(dir.at("raster.png").c_str(), b), 0);
    int differ = 0;
    int inside = 0;  // of a cell, where no outline moved by a pixel explains it
    std::set<int> colors;
    for (int y = 0; y < a.getHeight(); y++) {
      for (int x = 0; x < a.getWidth(); x++) {
        colors.insert(a.getVal(x, y));
        if (a.getVal(x, y) == b.getVal(x, y)) continue;
        differ++;
        bool beside = false;
        for (int k = 0; k < 9; k++) {
          beside |= a.getVal(x + k % 3 - 1, y + k / 3 - 1) == b.getVal(x, y);
        }
        inside += beside ? 0 : 1;
      }
    }
    EXPECT_EQ(inside, 0) << look;
    EXPECT_EQ(a.getWidth(), 640);
    EXPECT_GT(colors.size(), 10U) << "there is something in it";
    EXPECT_LT(differ, 640 * 512 / 200) << look;
  }
}
