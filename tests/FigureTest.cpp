// The frame loop: how many frames, at what times, of which files.

#include "Figure.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "Drawing.h"
#include "MetaTest.h"

using namespace ZQV;

namespace {

/** A drawing whose files come at given times, and which notes what it is asked. */
class Recorder : public Drawing {
 public:
  int init() override { return 1; }
  int getDomain(Domain&) override { return 0; }
  int setFile() override { return 1; }
  int setInput(const char*) override { return 1; }
  int setNameConv(const char*) override { return 1; }
  int setFilename() override { return note("file()"); }
  int setFilename(const char* text) override { return note(std::string("file(") + text + ")"); }
  int setFilename(Date&) override { return 1; }
  int setFilename(Date& date, const char*) override {
    if (period > 0) {
      current.set(date.getSeconds() / period * period);
    } else {
      current = date;
    }
    return date.getSeconds() >= first ? 1 : 0;
  }
  int setForeTime(const char* time) override { return note(std::string("fore(") + time + ")"); }
  int setParam(const char*) override { return 1; }
  int getDate(Date& date) override {
    date = current;
    return 1;
  }
  int getLoopType() override { return loop_type; }
  int getInitDate(Date& date) override { return date.set("20040102120000"); }
  int getDateOffset() override { return 600; }
  int getNumFrames() override { return frames; }
  int getSync() override { return sync; }
  int draw(Plot&) override {
    String text;
    current.toText("%d%H%M", text);
    return note(text.get());
  }
  int print() override { return 1; }

  std::vector<std::string> notes;
  long period = 0;  ///< seconds between files, 0 for one at any time
  long first = 0;
  int loop_type = 1;
  int frames = 1;
  int sync = 0;

 private:
  int note(const std::string& what) {
    notes.push_back(what);
    return 1;
  }
  Date current;
};

class FigureTest : public MetaTest {
 protected:
  std::vector<std::string> run(Recorder& drawing, const char* param) const {
    testing::internal::CaptureStdout();
    Zqv::putResrc("parameter", param);
    drawing.notes.clear();
    {
      Figure figure;
      figure.open();
      Domain domain;
      domain.set("latlon,40,-100,31,21,1,1");
      figure.startPlot(domain);
      figure.addDrawing(drawing);
      figure.endPlot();
      figure.manage();
    }
    testing::internal::GetCapturedStdout();
    return drawing.notes;
  }
};

using Notes = std::vector<std::string>;

}  // namespace

TEST_F(FigureTest, LoopsRunForwardToTheLastFrame) {
  Recorder drawing;
  EXPECT_EQ(run(drawing, ""), (Notes{"file()", "021200"}));
  EXPECT_EQ(run(drawing, "nf=3"), (Notes{"file()", "021140", "021150", "021200"}));
  EXPECT_EQ(run(drawing, "nf=3,linc=30,fi=x"), (Notes{"file(x)", "021100", "021130", "021200"}));
  // Any token that begins with "fi" names the file: deliberate.
  EXPECT_EQ(run(drawing, "filter=y").front(), "file(y)");
  drawing.frames = 2;
  EXPECT_EQ(run(drawing, ""), (Notes{"file()", "021150", "021200"}));
  drawing.period = 1800;
  EXPECT_EQ(run(drawing, "nf=6"), (Notes{"file()", "021100", "021130", "021200"}))
      << "a file is drawn once though frames ask for it again";
  drawing.first = 1073043000;  // 11:30
  EXPECT_EQ(run(drawing, "nf=6"), (Notes{"file()", "021130", "021200"})) << "a gap is no frame";
  EXPECT_LE(run(drawing, "nf=2000000000").size(), 130U) << "frames are capped";
  for (const char* none : {"nf=-5", "nf=0", "nf", "nf=x"}) {
    EXPECT_EQ(run(drawing, none).size(), 3U) << none << ": as if nothing were said";
  }
}

TEST_F(FigureTest, TheCurrentTimeIsTheLastFrame) {
  Recorder drawing;
  const auto last_frame = [&](const char* current) {
    Zqv::putResrc("current", current);
    return run(drawing, "").back();
  };
  EXPECT_EQ(last_frame("#200401031530"), "031530");
  EXPECT_EQ(last_frame("la-3"), "021200") << "left to the drawing";
  const auto ago = [](long seconds) {
    Date date;
    date.set(Date::getCurrentSeconds() - seconds);
    String text;
    date.toText("%d%H%M", text);
    return std::string(text.get());
  };
  const struct {
    const char* current;
    long seconds;
  } rows[] = {{"2", 7200}, {"2:30", 9000}, {"1d2:30", 95400}, {"1d2", 93600}, {"x", 0}};
  for (const auto& row : rows) {
    const std::string before = ago(row.seconds);
    const std::string got = last_frame(row.current);
    EXPECT_TRUE(got == before || got == ago(row.seconds)) << row.current;
  }
}

TEST_F(FigureTest, ForecastTimesReplaceDates) {
  Recorder drawing;
  drawing.sync = 1;
  Zqv::putResrc("time", "0-12/6");
  const Notes notes = run(drawing, "");
  EXPECT_EQ(std::count(notes.begin(), notes.end(), "fore(0)"), 1);
  EXPECT_EQ(std::count(notes.begin(), notes.end(), "fore(12)"), 1);
  Zqv::putResrc("time", "0-5/0");
  EXPECT_LE(run(drawing, "").size(), 4U) << "a step of 0 ends";
}
