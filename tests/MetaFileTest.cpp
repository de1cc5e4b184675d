#include "MetaFile.h"

#include <string>

#include <gtest/gtest.h>

#include "Image.h"
#include "Point.h"
#include "Points.h"
#include "ScratchDir.h"

namespace ZQV {
namespace {

class MetaFileTest : public testing::Test {
 protected:
  template <typename Draw>
  std::string page(const std::string& params, Draw draw) {
    testing::internal::CaptureStdout();
    MetaFile device;
    device.setParam(params.c_str());
    EXPECT_EQ(device.open(), 1);
    draw(device);
    device.close();
    said = testing::internal::GetCapturedStdout();
    return dir.read("a.meta");
  }
  /** The records alone. */
  template <typename Draw>
  std::string records(Draw draw) {
    const std::string text = page(dir.at("a.meta") + ",sz=640x480", draw);
    const std::string head = "#ZQV Plot: \n";
    const size_t from = text.find(head) + head.size();
    return text.substr(from, text.find("#End of plot\n") - from);
  }

  ScratchDir dir;
  std::string said;
};

TEST_F(MetaFileTest, RecordsDrawings) {
  Points p;
  p.add(1.0F, 2.0F);
  p.add(3.5F, -0.0F);
  EXPECT_EQ(records([&](MetaFile& device) {
              device.setClip(0.0F, 0.0F, 640.0F, 480.0F);
              device.drawLine(1, 1.0F, 2.0F, 3.0F, 4.0F);
              device.drawLine(2, p);
              device.drawFill(3, p);
              device.setFont("fixed");
              device.setTextAlign(2, 3);
              device.drawText(Point(5.0F, 6.0F), "two\nlines");
              device.setImageAlign(1, 3);
              device.message("Logo: x");
            }),
            "CL 0.000000 0.000000 640.000000 480.000000\n"
            "L 2 1.000000,2.000000 3.000000,4.000000\n"
            "L 2 1.000000,2.000000 3.500000,-0.000000 \n"
            "F 2 1.000000,2.000000 3.500000,-0.000000 \n"
            "FONT fixed\nTALIGN 2 3\nT 5.000000,6.000000 two lines\nIALIGN 1 3\n#Logo: x\n");
}

TEST_F(MetaFileTest, RecordsAttributesWhenTheyChange) {
  EXPECT_EQ(records([](MetaFile& device) {
              for (int i = 0; i < 2; i++) {
                device.setColor(1, 5);
                device.setColor(2, 6);
                device.setColor(3, 7);
                device.setColor(4, 8);
                device.setLineStyle(1, 2);
                device.setLineStyle(2, 3);
                device.setFillStyle(3, 9);
                device.setLineWidth(2, 2.0F);
                device.setLineWidth(4, 2.5F);
              }
              device.setColor(1, 0xffffff);
              EXPECT_EQ(device.setColor(9, 1), 0);
            }),
            "LCLR 5\nMCLR 6\nFCLR 7\nTCLR 8\nLSTY 2\nFSTY 9\nMWID 2.00\nTWID 2.50\nLCLR "
            "16777215\n");
}

// Deliberate: the width decides ahead of the element. A line's width other than 1.0 is never
// recorded, and a width of 1.0, or one of 0 that becomes it, goes to the line whatever it was meant
// for. As the line has that width from the start, there is nothing to record.
TEST_F(MetaFileTest, OnlyAWidthOfOneIsTheLines) {
  EXPECT_EQ(records([](MetaFile& device) {
              device.setLineWidth(1, 3.0F);
              device.setLineWidth(1, 1.0F);
              device.setLineWidth(2, 2.0F);
              device.setLineWidth(2, 1.0F);
              device.setLineWidth(2, 2.0F);
              device.setLineWidth(4, 2.0F);
              device.setLineWidth(4, -1.0F);
              device.setLineWidth(4, 2.0F);
            }),
            "MWID 2.00\nTWID 2.00\n");
}

TEST_F(MetaFileTest, RecordsImagesInTheClipBox) {
  Image image;
  image.set(2, 1, 8);
  image.allocData();
  image.allocColors(2);
  image.setColor(1, 1.0F, 0.5F, 0.0F);
  image.setPixel(1, 0, 1);
  // Deliberate: a row above the image has one pair of digits a pixel, all others have three.
  EXPECT_EQ(records([&](MetaFile& device) {
              device.setClip(10.0F, 20.0F, 14.0F, 23.0F);
              EXPECT_EQ(device.drawImage(image, 11.0F, 22.0F), 1);
              Image empty;
              EXPECT_EQ(device.drawImage(empty, 0.0F, 0.0F), 0);
            }),
            "CL 10.000000 20.000000 14.000000 23.000000\nI\n10 20 translate\n4 3 scale\n"
            "FFFFFFFF\nFFFFFF000000FF7F00FFFFFF\nFFFFFFFFFFFFFFFFFFFFFFFF\ngrestore\n");
}

}  // namespace
}  // namespace ZQV
