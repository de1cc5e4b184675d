// The window, with real events: the program runs on a display of the test's own, and keys, buttons
// and window managers are sent to it.

#include "XWindow.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "DynLib.h"
#include "NidsMaker.h"
#include "Run.h"
#include "TempDir.h"
#include "XLib.h"
#include "XServer.h"
#include "Zqv.h"

using namespace ZQV;

namespace {

bool waitFor(const std::function<bool()>& condition) {
  constexpr auto patience = std::chrono::seconds(10);
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return true;
}

std::string shellOutput(const std::string& command) {
  std::string out;
  std::FILE* pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) return out;
  char part[1000];
  while (std::fgets(part, sizeof(part), pipe) != nullptr) out += part;
  ::pclose(pipe);
  return out;
}

/** The program, running in a window until the test ends. */
class WindowTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_FALSE(server.display().empty()) << "Xvfb is needed"; }
  void TearDown() override {
    if (pid > 0) {
      ::kill(pid, SIGKILL);
      ::waitpid(pid, nullptr, 0);
    }
  }

  /** Starts the program and waits until its window is there. */
  void start(const std::string& args, const std::string& env = "") {
    const std::string command = "cd '" + dir.path + "' && exec env zqvdefault=/nonexistent " + env +
                                " DISPLAY=" + server.display() +
                                " '" ZQV_SCOPEVIEW "' -fp '" ZQV_DATA_DIR "' " + args +
                                " > out.txt 2> err.txt";
    pid = ::fork();
    if (pid == 0) {
      ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
      ::_exit(127);
    }
    ASSERT_TRUE(waitFor([&] { return !windowId().empty(); })) << dir.read("err.txt");
    id = windowId();
  }
  [[nodiscard]] std::string tool(const std::string& args) const {
    return shellOutput("DISPLAY=" + server.display() + " timeout 5 xdotool " + args +
                       " 2>/dev/null");
  }
  [[nodiscard]] std::string windowId() const {
    const std::string found = tool("search --class Zqv");
    return found.substr(0, found.find('\n'));
  }
  [[nodiscard]] std::string title() const { return tool("getwindowname " + id); }
  [[nodiscard]] std::string out() const { return dir.read("out.txt"); }
  [[nodiscard]] size_t count(const std::string& text) const {
    size_t n = 0;
    const std::string all = out();
    for (size_t at = all.find(text); at != std::string::npos; at = all.find(text, at + 1)) n++;
    return n;
  }
  /** Waits for the program to end. @return its status; -1 if it doesn't */
  int ended() {
    int status = -1;
    if (!waitFor([&] { return ::waitpid(pid, &status, WNOHANG) == pid; })) return -1;
    pid = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
  }
  bool saysSoon(const std::string& text, size_t times = 1) {
    return waitFor([&] { return count(text) >= times; });
  }
  /** The window on the screen. */
  [[nodiscard]] int pixelOf(int x, int y) const {
    const XLib* xlib = XLib::get();
    Display* d = xlib->XOpenDisplay(server.display().c_str());
    if (d == nullptr) return -1;
    XImage* image = xlib->XGetImage(d, std::stoul(id), x, y, 1, 1, AllPlanes, ZPixmap);
    const int value = image != nullptr ? static_cast<int>(XGetPixel(image, 0, 0)) : -1;
    if (image != nullptr) XDestroyImage(image);
    xlib->XCloseDisplay(d);
    return value;
  }
  /** Clears the window as a window manager might, and has the server tell it. */
  void clearWindow() const {
    DynLib library;
    decltype(&::XClearArea) clear = nullptr;
    const XLib* xlib = XLib::get();
    ASSERT_TRUE(library.open("libX11.so.6") != 0 && library.find("XClearArea", clear) != 0);
    Display* d = xlib->XOpenDisplay(server.display().c_str());
    ASSERT_NE(d, nullptr);
    clear(d, std::stoul(id), 0, 0, 0, 0, True);
    xlib->XSync(d, False);
    xlib->XCloseDisplay(d);
  }
  /** Writes a product of one ring, in the first colour or another one, under its date. */
  std::string product(int minute, int level = 5) {
    NidsMaker maker;
    maker.vol_secs = maker.prod_secs = 12 * 3600 + minute * 60;
    std::vector<NidsMaker::Radial> list(360, {0.0, 1.0, std::vector<int>(230, level)});
    for (size_t i = 0; i < list.size(); i++) list[i].ang0 = static_cast<double>(i);
    maker.layers.push_back(NidsMaker::radials(list));
    char name[40];
    std::snprintf(name, sizeof(name), "x_20210504_12%02d.nids", minute);
    return dir.write(name, maker.build());
  }
  /** A convention for those products, and the options of a loop over them. */
  std::string loop(const std::string& params) {
    dir.write("test.cnv", "nids " + dir.path + "/x_%Y%m%d_%h%n.nids - nids min=60\n");
    return "-in nids -nc " + dir.at("test.cnv") + " -pa " + params;
  }

  XServer server;
  TempDir dir;
  pid_t pid = -1;
  std::string id;
};

constexpr const char* DRAWN = "Plotting for";

}  // namespace

TEST_F(WindowTest, OpensWhereAndAsLargeAsAskedAndEndsWithReturn) {
  start(product(0) + " -in nids -ge 400x300-30-40 -ti my_radar");
  ASSERT_TRUE(saysSoon(DRAWN));
  const std::string geometry = tool("getwindowgeometry --shell " + id);
  EXPECT_NE(geometry.find("X=850\nY=684\nWIDTH=400\nHEIGHT=300\n"), std::string::npos) << geometry;
  EXPECT_EQ(title(), "my radar\n");
  ASSERT_TRUE(waitFor([&] { return pixelOf(200, 150) > 0; })) << "the product covers the middle";
  // What was covered and is wiped out comes back.
  const int shown = pixelOf(200, 150);
  clearWindow();
  EXPECT_TRUE(waitFor([&] { return pixelOf(200, 150) == shown; }));
  (void)tool("mousemove 900 800 key Return");
  EXPECT_EQ(ended(), 0);
  EXPECT_EQ(dir.read("err.txt").find("X11"), std::string::npos);
}

TEST_F(WindowTest, KeysQueryZoomPanAndSave) {
  start(product(0) + " -in nids -pd latlon,40,-100,101,81,0.1,0.1 -ti radar");
  ASSERT_TRUE(saysSoon(DRAWN));
  const std::string geometry = tool("getwindowgeometry --shell " + id);
  // The middle of the page is the middle of the domain.
  (void)tool("mousemove --window " + id + " 320 256 key alt+v");
  ASSERT_TRUE(saysSoon("Pixel: 320 256"));
  const std::string all = out();
  float lat = 0.0F;
  float lon = 0.0F;
  const size_t at = all.find("Lat: ");
  ASSERT_NE(at, std::string::npos);
  EXPECT_EQ(std::sscanf(all.c_str() + at, "Lat: %f Lon: %f", &lat, &lon), 2);
  EXPECT_NEAR(lat, 40.0F, 0.05F);
  EXPECT_NEAR(lon, -100.0F, 0.05F);
  const auto domain_after = [&](const std::string& key, size_t times) {
    (void)tool("mousemove --window " + id + " 420 256 key " + key);
    EXPECT_TRUE(saysSoon("New domain", times)) << key;
    EXPECT_TRUE(saysSoon(DRAWN, times + 1)) << key;
    const std::string text = out();
    std::string line = text.substr(text.rfind("New domain: "));
    line = line.substr(0, line.find('\n'));
    float clat = 0.0F;
    float clon = 0.0F;
    int nx = 0;
    int ny = 0;
    float dx = 0.0F;
    const size_t comma = line.find(',', line.find("latlon"));
    EXPECT_EQ(std::sscanf(line.c_str() + comma, ",%f,%f,%d,%d,%f", &clat, &clon, &nx, &ny, &dx), 5)
        << line;
    return std::array<float, 2>{clon, static_cast<float>(nx - 1) * dx};
  };
  // The picture is 10 degrees by 8 in 589 by 471 pixels.
  const float degrees = 8.0F / 471.0F;
  const auto zoomed = domain_after("alt+z", 1);
  EXPECT_NEAR(zoomed[0], -100.0F + 100.0F * degrees, 0.03F);
  EXPECT_NEAR(zoomed[1], 5.0F, 0.1F);
  const auto panned = domain_after("alt+p", 2);
  EXPECT_NEAR(panned[0], zoomed[0] + 50.0F * degrees, 0.03F);
  const auto wider = domain_after("alt+shift+z", 3);
  EXPECT_NEAR(wider[1], 10.0F, 0.1F);
  // The letter is let go first, as people do.
  (void)tool("keydown alt key u keyup alt");
  EXPECT_TRUE(saysSoon(DRAWN, 5)) << "unzoom";
  (void)tool("keydown alt key r keyup alt");
  EXPECT_TRUE(saysSoon(DRAWN, 6)) << "redraw";
  (void)tool("mousemove --window " + id + " 320 256 key alt+v");
  ASSERT_TRUE(saysSoon("Pixel: 320 256", 2));
  EXPECT_EQ(out().substr(out().rfind("Lat: "), 14), all.substr(at, 14)) << "the first domain again";
  EXPECT_EQ(count(DRAWN), 6U) << "a key draws once";
  (void)tool("key alt+s");
  EXPECT_TRUE(saysSoon("Created GIF file: radar.gif"));
  (void)tool("key alt+shift+s");
  EXPECT_TRUE(saysSoon("Created PNG file: radar.png"));
  EXPECT_EQ(dir.read("radar.gif").substr(0, 3), "GIF");
  EXPECT_EQ(dir.read("radar.png").substr(1, 3), "PNG");
}

TEST_F(WindowTest, AClientsResizeRedrawsOnceForEachSize) {
  start(product(0) + " -in nids");
  ASSERT_TRUE(saysSoon(DRAWN));
  (void)tool("windowsize " + id + " 800 600");
  ASSERT_TRUE(saysSoon(DRAWN, 2));
  EXPECT_TRUE(waitFor([&] { return pixelOf(780, 300) >= 0 && pixelOf(400, 300) > 0; }));
  // A move keeps the size and draws nothing.
  (void)tool("windowmove " + id + " 10 10");
  std::this_thread::sleep_for(std::chrono::milliseconds(600));
  EXPECT_EQ(count(DRAWN), 2U);
  (void)tool("mousemove --window " + id + " 400 300 key alt+v");
  EXPECT_TRUE(saysSoon("Pixel: 400 300"));
}

TEST_F(WindowTest, ALoopPlaysStepsAndLosesFrames) {
  // Four files in six times: two gaps.
  for (const int minute : {0, 10, 30, 50}) product(minute, 3 + minute / 10);
  start(loop("nf=6,linc=10") + " -cu '#202105041250' -de d,,show_num -ti loop",
        "zqvcurtime='#202105041300'");
  ASSERT_TRUE(saysSoon(DRAWN, 4)) << out() << dir.read("err.txt");
  EXPECT_EQ(count(DRAWN), 4U) << "gaps make no frames";
  const auto shows = [&](const std::string& frame) {
    return waitFor([&] { return title().find("[" + frame + "]") != std::string::npos; });
  };
  for (const char* frame : {"0", "1", "2", "3", "0"}) EXPECT_TRUE(shows(frame)) << frame;
  (void)tool("mousemove --window " + id + " 300 200 key alt+l");
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  const std::string paused = title();
  std::this_thread::sleep_for(std::chrono::milliseconds(1500));
  EXPECT_EQ(title(), paused);
  const int at = paused[paused.find('[') + 1] - '0';
  const auto frame = [&](int i) { return std::to_string((i + 8) % 4); };
  (void)tool("click 3");
  EXPECT_TRUE(shows(frame(at + 1))) << "button 3 steps on";
  (void)tool("key alt+bracketright");
  EXPECT_TRUE(shows(frame(at + 2)));
  (void)tool("click 1");
  EXPECT_TRUE(shows(frame(at + 1))) << "button 1 steps back";
  (void)tool("key alt+bracketleft");
  EXPECT_TRUE(shows(frame(at)));
  (void)tool("key alt+s");
  EXPECT_TRUE(saysSoon("Created GIF file: loop-0" + frame(at) + ".gif"));
  EXPECT_EQ(count("Created GIF"), 1U) << "the frame shown, as the loop doesn't run";
  (void)tool("key alt+d");
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  (void)tool("click 2");
  for (const char* left : {"0", "1", "2", "0"}) EXPECT_TRUE(shows(left)) << "three are left";
  (void)tool("key alt+s");
  EXPECT_TRUE(saysSoon("Created GIF file: loop-02.gif"));
  EXPECT_EQ(count("Created GIF"), 4U) << "all frames of a running loop";
}

TEST_F(WindowTest, RefreshPicksUpAFileThatAppears) {
  product(0);
  dir.write("test.cnv", "nids " + dir.path + "/x_%Y%m%d_%h%n.nids - nids min=60\n");
  start(loop("ref=2") + " -cu la");
  ASSERT_TRUE(saysSoon(DRAWN));
  const size_t before = count("reading file");
  // A file of the present minute.
  const std::time_t now = std::time(nullptr);
  char name[60];
  std::strftime(name, sizeof(name), "x_%Y%m%d_%H%M.nids", std::gmtime(&now));
  NidsMaker maker;
  maker.vol_days = maker.prod_days = maker.mess_days = static_cast<int>(now / 86400) + 1;
  maker.vol_secs = maker.prod_secs = static_cast<int>(now % 86400);
  maker.layers.push_back(NidsMaker::radials({{0.0, 90.0, std::vector<int>(230, 9)}}));
  dir.write(name, maker.build());
  EXPECT_TRUE(waitFor([&] { return out().find(name) != std::string::npos; })) << out();
  EXPECT_GT(count("reading file"), before);
}

TEST_F(WindowTest, TheClosingButtonEndsTheRunAsReturnDoes) {
  start(product(0) + " -in nids");
  ASSERT_TRUE(saysSoon(DRAWN));
  // What a window manager sends.
  DynLib library;
  decltype(&::XSendEvent) send = nullptr;
  const XLib* xlib = XLib::get();
  ASSERT_TRUE(library.open("libX11.so.6") != 0 && library.find("XSendEvent", send) != 0);
  Display* d = xlib->XOpenDisplay(server.display().c_str());
  ASSERT_NE(d, nullptr);
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = std::stoul(id);
  event.xclient.message_type = xlib->XInternAtom(d, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(xlib->XInternAtom(d, "WM_DELETE_WINDOW", False));
  send(d, event.xclient.window, False, NoEventMask, &event);
  xlib->XCloseDisplay(d);
  EXPECT_EQ(ended(), 0);
  EXPECT_EQ(dir.read("err.txt").find("X11"), std::string::npos);
}

TEST_F(WindowTest, ALostServerEndsTheLoop) {
  for (const int minute : {0, 10, 20}) product(minute, 3 + minute / 10);
  start(loop("nf=3,linc=10") + " -cu '#202105041220'", "zqvcurtime='#202105041300'");
  ASSERT_TRUE(saysSoon(DRAWN, 3));
  std::this_thread::sleep_for(std::chrono::milliseconds(700));
  server.kill();
  EXPECT_EQ(ended(), 0) << dir.read("err.txt");
  EXPECT_NE(dir.read("err.txt").find("X11 Disconnected\n"), std::string::npos);
}

TEST_F(WindowTest, ALoopOfOneFileShowsIt) {
  product(0);
  start(loop("nf=4,linc=10") + " -cu '#202105041230' -pd latlon,35.333,-97.278,61,41,.1,.1",
        "zqvcurtime='#202105041300'");
  ASSERT_TRUE(saysSoon(DRAWN));
  EXPECT_TRUE(waitFor([&] { return pixelOf(320, 200) > 0; }));
  (void)tool("mousemove --window " + id + " 300 200 key alt+r");
  ASSERT_TRUE(saysSoon(DRAWN, 2));
  EXPECT_TRUE(waitFor([&] { return pixelOf(320, 200) > 0; }));
}

TEST_F(WindowTest, APausedLoopShowsItsNewestFrameAfterARedraw) {
  for (const int minute : {0, 10, 20}) product(minute, 3 + minute / 10);
  start(loop("nf=3,linc=10") + " -cu '#202105041220' -de d,,show_num",
        "zqvcurtime='#202105041300'");
  ASSERT_TRUE(saysSoon(DRAWN, 3));
  (void)tool("mousemove --window " + id + " 300 200 key alt+l");
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  (void)tool("key alt+r");
  ASSERT_TRUE(saysSoon(DRAWN, 6));
  EXPECT_TRUE(waitFor([&] { return title().find("[2]") != std::string::npos; })) << title();
}

TEST(XWindowTest, DrawsIntoTheWindowOfAnotherProgram) {
  XServer server;
  Zqv::setMessageLevel("none");
  const XLib* xlib = XLib::get();
  ASSERT_NE(xlib, nullptr);
  Display* d = xlib->XOpenDisplay(server.display().c_str());
  ASSERT_NE(d, nullptr);
  XSetWindowAttributes attributes{};
  const Window host =
      xlib->XCreateWindow(d, DefaultRootWindow(d), 0, 0, 60, 40, 0, DefaultDepth(d, 0), InputOutput,
                          DefaultVisual(d, 0), CWBackPixel, &attributes);
  const Pixmap pixmap =
      xlib->XCreatePixmap(d, host, 60, 40, static_cast<unsigned>(DefaultDepth(d, 0)));
  xlib->XMapWindow(d, host);
  xlib->XSync(d, False);
  XWindow guest;
  guest.setParam(("co=" + server.display() + ",wp=+" + std::to_string(host) + ":" +
                  std::to_string(pixmap) + ":60x40:0")
                     .c_str());
  ASSERT_EQ(guest.open(), 1);
  guest.clear();
  guest.setLineWidth(Device::LINE, 8.0F);
  guest.drawLine(Device::LINE, 5.0F, 20.0F, 50.0F, 20.0F);
  EXPECT_EQ(guest.update(), 1);
  XImage* image = xlib->XGetImage(d, host, 20, 20, 1, 1, AllPlanes, ZPixmap);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(XGetPixel(image, 0, 0), 0xffffffU);
  XDestroyImage(image);
  EXPECT_EQ(guest.manage(), 0) << "the loop is the host's";
  guest.close();
  xlib->XCloseDisplay(d);
  Zqv::setMessageLevel(6);
}
