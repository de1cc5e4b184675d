#include "Postscript.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "File.h"
#include "Image.h"
#include "PageBuffer.h"
#include "Points.h"
#include "ScratchDir.h"

namespace ZQV {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/** What a device writes to its file between two marks in its comments. */
std::string between(const std::string& page, const std::string& first, const std::string& last) {
  const size_t from = page.find(first) + first.size();
  return page.substr(from, page.find(last, from) - from);
}

class PostscriptTest : public testing::Test {
 protected:
  /** The page that draw(device) makes. */
  template <typename Draw>
  std::string page(const std::string& params, Draw draw) {
    testing::internal::CaptureStdout();
    Postscript device;
    device.setParam((dir.at("a.ps") + params).c_str());
    device.setTitle("Title\nshowpage");
    EXPECT_EQ(device.open(), 1);
    draw(device);
    EXPECT_EQ(device.close(), 1);
    said = testing::internal::GetCapturedStdout();
    return dir.read("a.ps");
  }
  template <typename Draw>
  std::string drawing(const std::string& params, Draw draw) {
    return between(page(params, draw), "%%ZQV Plot: Title showpage\n", "%%End of plot\n");
  }

  ScratchDir dir;
  std::string said;
};

Points triangle() {
  Points p;
  p.add(1.0F, 2.0F);
  p.add(10.125F, -0.001F);
  p.add(3.0F, 400.5F);
  return p;
}

/** 3 by 2 pixels: red, white, black; blue, transparent, gray. */
Image smallImage() {
  Image image;
  image.set(3, 2, 8);
  image.allocData();
  image.allocColors(6);
  const float colors[][3] = {{1, 0, 0}, {1, 1, 1}, {0, 0, 0}, {0, 0, 1}, {-1, 0, 0}, {.5, .5, .5}};
  for (int i = 0; i < 6; i++) {
    image.setColor(i, colors[i][0], colors[i][1], colors[i][2]);
    image.setPixel(i % 3, i / 3, i);
  }
  return image;
}

TEST_F(PostscriptTest, WritesAPageThatCanBePrinted) {
  const std::string text = page("", [](Postscript&) {});
  EXPECT_EQ(said, "Creating: " + dir.at("a.ps") + "\n");
  EXPECT_EQ(text.substr(0, text.find("%%CreationDate")),
            "%!PS-Adobe-1.0\n"
            "%%Title: ZQV Graphics Display: Title showpage\n"
            "%%Creator: ZQV Postscript Processor-5.5\n");
  EXPECT_EQ(text.substr(text.find("%%EndComments")),
            "%%EndComments\n%%Postscript initialization\n30 dict begin\n/saveobj save def\n"
            "/inch {72 mul} def\n/dot {.33 mul} def\n/mv {moveto} def\n/ln {lineto} def\n"
            "/lw {setlinewidth} def\n/np {newpath} def\n/cp {closepath} def\n90 rotate\n"
            ".25 inch -8.25 inch translate\n0 setgray\n2 setlinejoin\n1 dot lw\n[] 0 setdash\n"
            "%%Begin plot\n%%ZQV Plot: Title showpage\n%%End of plot\nsaveobj restore\nshowpage\n"
            "end\n%%EOF\n");
}

TEST_F(PostscriptTest, FollowsItsParameters) {
  const struct {
    const char* params;
    float width, height;
    bool inverse;
    testing::Matcher<std::string> text;
  } rows[] = {
      {"", 756.0F, 576.0F, false, HasSubstr("\n0 setgray\n")},
      // Deliberate: colour on paper turns a black background white.
      {",COLOR", 756.0F, 576.0F, true, HasSubstr("\n0 0 0 setrgbcolor\n")},
      {",color,gray", 756.0F, 576.0F, true, HasSubstr("\n0 setgray\n")},
      {",port", 756.0F, 576.0F, false,
       AllOf(HasSubstr("\n.25 inch .25 inch translate\n"), Not(HasSubstr("rotate")))},
      {",eps", 756.0F, 576.0F, false,
       AllOf(HasSubstr("%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 576 756\n"),
             HasSubstr("\n0. inch -8.5 inch translate\n"),
             HasSubstr("%%End of plot\n30 dict begin /saveobj save def\nsaveobj restore\n"))},
      {",eps,port", 756.0F, 576.0F, false,
       AllOf(HasSubstr("%%BoundingBox: 0 0 756 576\n"), Not(HasSubstr("inch translate")))},
      {",eps,noeps,port,land", 756.0F, 576.0F, false, HasSubstr("\n30 dict begin\n/saveobj")},
      {",scale=0.5", 756.0F, 576.0F, false, HasSubstr("\n0.50 0.50 scale\n")},
      {",scale=0,scale=x,scale=1e99,scale=.001,scale", 756.0F, 576.0F, false,
       Not(HasSubstr(" scale\n"))},
      {",a4", 11.2F * 72.0F, 7.8F * 72.0F, false, HasSubstr("")},
      {",11X17", 16.5F * 72.0F, 10.5F * 72.0F, false, HasSubstr("")},
      {",ansid", 33.5F * 72.0F, 21.5F * 72.0F, false, HasSubstr("")},
      {",sz=8:6.5", 576.0F, 468.0F, false, HasSubstr("")},
      {",sz=-8:6,sz=0:1,sz=inf:1,sz=8,sz", 756.0F, 576.0F, false, HasSubstr("")}};
  for (const auto& row : rows) {
    EXPECT_THAT(page(row.params,
                     [&](Postscript& device) {
                       EXPECT_FLOAT_EQ(device.getWidth(), row.width) << row.params;
                       EXPECT_FLOAT_EQ(device.getHeight(), row.height) << row.params;
                       EXPECT_EQ(device.getInverse(), row.inverse) << row.params;
                     }),
                row.text)
        << row.params;
  }
  Postscript device;
  device.setSize(1000.0F, 500.0F);
  const Rect r = device.getCoords();
  EXPECT_EQ(r.xmin, 0.0F);
  EXPECT_EQ(r.ymin, 360.0F) << "the page begins at its top";
  EXPECT_EQ(r.xmax, 720.0F);
  EXPECT_EQ(r.ymax, 0.0F);
}

TEST_F(PostscriptTest, OpensPipesAndAppends) {
  dir.write("a.ps", "before\n");
  testing::internal::CaptureStdout();
  {
    Postscript device;
    device.setParam(("+" + dir.at("a.ps")).c_str());
    EXPECT_EQ(device.open(), 1);
    EXPECT_EQ(device.open(), 0) << "twice";
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Appending to: " + dir.at("a.ps") + "\n");
  const std::string text = dir.read("a.ps");
  EXPECT_THAT(text, testing::StartsWith("before\n%!PS-Adobe-1.0\n"));
  EXPECT_THAT(text, testing::EndsWith("%%End of plot\n")) << "closed when destroyed, no trailer";
  testing::internal::CaptureStdout();
  {
    Postscript device;
    device.setParam(("|cat > " + dir.at("b.ps")).c_str());
    EXPECT_EQ(device.open(), 1);
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Spooling to: cat > " + dir.at("b.ps") + "\n");
  EXPECT_THAT(dir.read("b.ps"), testing::EndsWith("%%EOF\n"));
  testing::internal::CaptureStderr();
  Postscript device;
  device.setParam("/proc/none/a.ps");
  EXPECT_EQ(device.open(), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Postscript: unable to output to file\n");
  EXPECT_EQ(device.drawLine(1, triangle()) + device.drawFill(3, triangle()) + device.close(), 0);
}

TEST_F(PostscriptTest, DrawsLinesOfEachElement) {
  const std::string path = "np\n1.00 2.00 mv\n10.12 -0.00 ln\n3.00 400.50 ln\nstroke\n";
  EXPECT_EQ(drawing(",color,lwidth=2",
                    [](Postscript& device) {
                      device.setColor(1, device.allocColor(1.0F, 0.5F, 0.0F));
                      device.setColor(2, 0x0000ff);
                      device.setColor(4, 0x00ff00);
                      device.setLineWidth(1, 1.5F);
                      device.setLineWidth(2, 0.0F);
                      device.setLineWidth(4, 4.0F);
                      device.setLineStyle(1, 4);
                      device.drawLine(1, triangle());
                      device.setLineStyle(1, 9);
                      device.drawLine(1, 1.0F, 2.0F, 3.0F, 4.0F);
                      device.drawLine(2, triangle());
                      device.drawLine(4, triangle());
                      EXPECT_EQ(device.drawLine(1, Points()), 0);
                    }),
            "%%PL:3\n1.00 0.50 0.00 setrgbcolor\n3.0 dot lw\n[6 6 3 6] 0 setdash\n" + path +
                "%%PL:2\n1.00 0.50 0.00 setrgbcolor\n3.0 dot lw\n"
                "np\n1.00 2.00 mv\n3.00 4.00 ln\nstroke\n"
                "%%PL:3\n0.00 0.00 1.00 setrgbcolor\n[] 0 setdash\n2.0 dot lw\n" +
                path + "%%PL:3\n0.00 1.00 0.00 setrgbcolor\n[] 0 setdash\n8.0 dot lw\n" + path);
}

TEST_F(PostscriptTest, FillsClipsAndComments) {
  EXPECT_EQ(drawing("",
                    [](Postscript& device) {
                      device.setColor(3, 0xffffff);
                      device.setFillStyle(3, 9);
                      device.drawFill(3, triangle());
                      device.drawFill(1, triangle());
                      device.setClip(10.0F, 20.0F, 30.0F, 50.0F);
                      const Rect clip = device.getClip();
                      EXPECT_FLOAT_EQ(clip.xmin, 9.9F);
                      EXPECT_FLOAT_EQ(clip.ymax, 50.1F);
                      device.message("a\nb");
                    }),
            "%%FA:3\n1.00 setgray\nnp\n1.00 2.00 mv\n10.12 -0.00 ln\n3.00 400.50 ln\ncp\nfill\n"
            "%%FA:3\nnp\n1.00 2.00 mv\n10.12 -0.00 ln\n3.00 400.50 ln\ncp\nfill\n"
            "initclip\nnp\n9.90 19.90 mv\n9.90 50.10 ln\n30.10 50.10 ln\n30.10 19.90 ln\ncp\nclip\n"
            "%% a b\n");
}

TEST_F(PostscriptTest, PlacesImagesInTheClipBox) {
  // The box is 5 by 4 pixels; the place is that of the image's upper left corner.
  constexpr struct {
    const char* fault;
    const char* params;
    float x, y;
    const char* rows;
  } rows[] = {
      {"PaddedOnAllSides", ",color", 11.0F, 23.0F,
       "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\nFFFFFFFF0000FFFFFF000000FFFFFF\n"
       "FFFFFF0000FFFFFFFF7F7F7FFFFFFF\nFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\n"},
      {"SticksOutAtTheUpperLeft", ",color", 9.0F, 25.0F,
       "FFFFFF7F7F7FFFFFFFFFFFFFFFFFFF\nFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\n"
       "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\nFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\n"},
      {"SticksOutAtTheLowerRight", ",color", 13.0F, 21.0F,
       "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\nFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\n"
       "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\nFFFFFFFFFFFFFFFFFFFF0000FFFFFF\n"},
      {"FarAway", ",color", -30000.0F, 30000.0F,
       "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\nFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\n"
       "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\nFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF\n"},
      // Deliberate: gray images have two levels, and only pure white is white.
      {"GrayOfTwoLevels", "", 11.0F, 23.0F, "FFFFFFFFFF\nFF00FF00FF\nFF00FF00FF\nFFFFFFFFFF\n"}};
  for (const auto& row : rows) {
    Image image = smallImage();
    const std::string text = drawing(row.params, [&](Postscript& device) {
      device.setClip(10.0F, 20.0F, 15.0F, 24.0F);
      EXPECT_EQ(device.drawImage(image, 3, row.x, row.y), 1);
    });
    const bool color = *row.params != '\0';
    EXPECT_EQ(text.substr(text.find("gsave")),
              std::string("gsave\n10 20 translate\n5 4 scale\n/picstr 5 string def\n"
                          "5 4 8 [ 5 0 0 -4 0 4 ]\n{ currentfile picstr readhexstring pop }\n") +
                  (color ? "false 3 colorimage\n" : "image\n") + row.rows + "grestore\n")
        << row.fault;
  }
}

TEST_F(PostscriptTest, BreaksLongRowsAndRefusesHugeRasters) {
  Image image = smallImage();
  const std::string text = drawing("", [&](Postscript& device) {
    device.setClip(0.0F, 0.0F, 200.0F, 1.0F);
    EXPECT_EQ(device.drawImage(image, 0.0F, 1.0F), 1);
    device.message("huge");
    device.setClip(-30000.0F, -30000.0F, 30000.0F, 30000.0F);
    EXPECT_EQ(device.drawImage(image, 0.0F, 1.0F), 0);
    device.setClip(5.0F, 5.0F, 5.0F, 5.0F);
    EXPECT_EQ(device.drawImage(image, 0.0F, 1.0F), 0) << "empty box";
    Image empty;
    EXPECT_EQ(device.drawImage(empty, 0.0F, 1.0F), 0);
    EXPECT_EQ(device.getImage(image), 0);
    EXPECT_FALSE(image.validData());
  });
  std::string f80;
  for (int i = 0; i < 80; i++) f80 += "FF";
  EXPECT_EQ(between(text, "\nimage\n", "grestore"),
            "00FF00" + f80.substr(6) + "\n" + f80 + "\n" + f80.substr(80) + "\n");
  EXPECT_THAT(between(text, "%% huge\n", "%%End"), Not(HasSubstr("gsave")));
}

template <int digits>
void expectAsPrintf(PageBuffer& out, const ScratchDir& dir, File& file,
                    const std::vector<float>& values) {
  char text[100];
  std::string expected;
  ASSERT_EQ(file.open(dir.at("numbers").c_str(), "w"), 1);
  for (const float v : values) {
    out.putFloat<digits>(v);
    out.put('\n');
    std::snprintf(text, sizeof(text), "%.*f\n", digits, static_cast<double>(v));
    expected += text;
  }
  out.flush();
  file.close();
  EXPECT_TRUE(dir.read("numbers") == expected) << digits << " digits";  // megabytes of text
}

TEST(PageBufferTest, WritesNumbersAsPrintfDoes) {
  std::vector<float> values = {
      0.0F,      -0.0F, 0.005F,       -0.004F, 0.125F, 0.375F,     -0.125F,  0.5F,   1.5F,
      2.5F,      -0.5F, 1e-7F,        -1e-7F,  5e-7F,  0.0000005F, 99.995F,  999.9F, 30000.0F,
      -30000.0F, 1e9F,  123456789.0F, 1e10F,   1e15F,  3.4e38F,    -3.4e38F, 1e-45F};
  std::mt19937 random(7);
  for (int i = 0; i < 100000; i++) {
    const auto bits = static_cast<uint32_t>(random());
    float any = 0.0F;
    std::memcpy(&any, &bits, sizeof(any));
    if (std::isfinite(any)) values.push_back(any);
    values.push_back(static_cast<float>(static_cast<int>(bits)) / 65536.0F);
    values.push_back(static_cast<float>(static_cast<int>(bits) >> 12) / 8.0F);  // ties
  }
  const ScratchDir dir;
  File file;
  PageBuffer out(file);
  expectAsPrintf<0>(out, dir, file, values);
  expectAsPrintf<1>(out, dir, file, values);
  expectAsPrintf<2>(out, dir, file, values);
  expectAsPrintf<6>(out, dir, file, values);
}

TEST(PageBufferTest, KeepsThePageReadable) {
  const ScratchDir dir;
  File file;
  PageBuffer out(file);
  ASSERT_EQ(file.open(dir.at("a").c_str(), "w"), 1);
  out.putFloat<2>(std::numeric_limits<float>::quiet_NaN());
  out.put(' ');
  out.putFloat<1>(-std::numeric_limits<float>::infinity());
  out.putInt(std::numeric_limits<int>::min());
  out.putLine("\x01 tab\tend\x7f\xe9");
  out.putLine(nullptr);
  const std::string block(300, 'x');
  for (int i = 0; i < 2000; i++) out.put(block);
  out.flush();
  file.close();
  const std::string text = dir.read("a");
  EXPECT_EQ(text.substr(0, 34), "0.00 0.0-2147483648  tab end \xe9xxxx");
  EXPECT_EQ(text.size(), 30U + 2000U * 300U);
}

}  // namespace
}  // namespace ZQV
