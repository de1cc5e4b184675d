#include "Hpgl.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Image.h"
#include "Point.h"
#include "Points.h"
#include "ScratchDir.h"

namespace ZQV {
namespace {

class HpglTest : public testing::Test {
 protected:
  template <typename Draw>
  std::string page(const std::string& params, Draw draw) {
    testing::internal::CaptureStdout();
    Hpgl device;
    device.setParam(params.c_str());
    EXPECT_EQ(device.open(), 1);
    draw(device);
    EXPECT_EQ(device.close(), 1);
    EXPECT_EQ(device.close(), 0);
    said = testing::internal::GetCapturedStdout();
    return dir.read("a.hpgl");
  }
  /** What is drawn with a pen of one millimetre. */
  template <typename Draw>
  std::string drawing(Draw draw) {
    const std::string text = page(dir.at("a.hpgl") + ",lwidth=1", draw);
    const std::string head = "IN;SP1;PA;\nPW1.0;SV;LT;\n";
    const std::string tail = "SP;PG;\n";
    EXPECT_THAT(text, testing::StartsWith(head));
    EXPECT_THAT(text, testing::EndsWith(tail));
    return text.substr(head.size(), text.size() - head.size() - tail.size());
  }

  ScratchDir dir;
  std::string said;
};

TEST_F(HpglTest, FollowsItsParameters) {
  constexpr struct {
    const char* params;
    float width, height;
    const char* text;
  } rows[] = {{"", 756.0F, 576.0F, "IN;SP1;PA;\nPW0.3;SV;LT;\nSP;PG;\n"},
              {",pcl", 756.0F, 576.0F,
               "\033E\033%1B\033&l1O\nIN;SP1;PA;\nPW0.3;SV;LT;\nSP;PG;\n\033%0A\033E"},
              {",LJ,lwidth=0.5", 756.0F, 576.0F,
               "\033E\033%1B\033&l1O\nIN;SP1;PA;\nRO90;\nPW0.5;SV;LT;\nSP;PG;\n\033%0A\033E"},
              {",pcl,nopcl,port", 756.0F, 576.0F, "IN;SP1;PA;\nRO90;\nPW0.3;SV;LT;\nSP;PG;\n"},
              {",rot=270", 756.0F, 576.0F, "IN;SP1;PA;\nRO270;\nPW0.3;SV;LT;\nSP;PG;\n"},
              {",rot=45,sz=2:1", 2030.0F, 1015.0F, "IN;SP1;PA;\nPW0.3;SV;LT;\nSP;PG;\n"},
              {",roll=36", 36.0F * 1015.0F, 23.0F * 1015.0F, "IN;SP1;PA;\nPW0.3;SV;LT;\nSP;PG;\n"},
              {",a3,sz=-1:5", 756.0F, 576.0F, "IN;SP1;PA;\nPW0.3;SV;LT;\nSP;PG;\n"}};
  for (const auto& row : rows) {
    EXPECT_EQ(page(dir.at("a.hpgl") + row.params,
                   [&](Hpgl& device) {
                     EXPECT_FLOAT_EQ(device.getWidth(), row.width) << row.params;
                     EXPECT_FLOAT_EQ(device.getHeight(), row.height) << row.params;
                   }),
              row.text)
        << row.params;
  }
  Hpgl device;
  device.setParam(",color");
  EXPECT_TRUE(device.getInverse());
}

TEST_F(HpglTest, AppendsThePenLineAlone) {
  page(dir.at("a.hpgl"), [](Hpgl&) {});
  EXPECT_EQ(said, "Creating: " + dir.at("a.hpgl") + "\n");
  EXPECT_EQ(page("+" + dir.at("a.hpgl") + ",pcl", [](Hpgl&) {}),
            "IN;SP1;PA;\nPW0.3;SV;LT;\nSP;PG;\nPW0.3;SV;LT;\n");
  EXPECT_EQ(said, "Appending to: " + dir.at("a.hpgl") + "\n");
}

TEST_F(HpglTest, DrawsWithoutColoursTextsAndImages) {
  Points p;
  p.add(1.0F, 2.5F);
  p.add(3.5F, -0.4F);
  p.add(5.0F, 6.0F);
  Image image;
  image.set(1, 1, 8);
  image.allocData();
  image.allocColors(1);
  image.setColor(0, 0.0F, 1.0F, 0.0F);
  EXPECT_EQ(drawing([&](Hpgl& device) {
              device.setColor(1, 0xff0000);
              device.setLineWidth(1, 2.0F);
              device.setLineWidth(2, 3.0F);
              device.setLineWidth(4, 0.5F);
              device.setLineStyle(1, 3);
              device.drawLine(1, p);
              device.setLineStyle(1, 9);
              device.drawLine(1, 1.0F, 2.0F, 3.0F, 4.0F);
              device.drawLine(2, p);
              device.drawLine(4, p);
              device.drawFill(3, p);
              device.drawText(Point(1.0F, 2.0F), "text");
              device.message("text");
              EXPECT_EQ(device.drawImage(image, 1.0F, 2.0F), 1);
              EXPECT_EQ(image.getPixel(0, 0), 0x00ff00) << "the palette is allocated";
              device.setClip(10.0F, 20.0F, 30.0F, 40.0F);
            }),
            "SV;\nPW2.0;\nLT5,8,1;\nPU1,2;PD4,-0;PD5,6;"
            "SV;\nPW2.0;\nPU1,2;PD3,4;"
            "SV;\nLT;\nPW3.0;\nPU1,2;PD4,-0;PD5,6;"
            "SV;\nLT;\nPW0.5;\nPU1,2;PD4,-0;PD5,6;"
            "SV;\nPU1,2;PM0;PD4,-0;PD5,6;PM1;PM2;FP;\n"
            "IW 10,20,30,40;\n");
}

}  // namespace
}  // namespace ZQV
