#include "MapPlot.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "Domain.h"
#include "Plot.h"
#include "Zqv.h"

// The map list language, and the drawing behind it. The first byte chooses the view and the pass,
// the rest is a list; some lines of it, as one alone may ask for a lot.

namespace {

constexpr size_t most_text = 40;
constexpr const char* views[] = {"latlon,40,-100,41,41,1,1", "or:40:180,40,180,61,41,3,3",
                                 "lc:40:-97:33:45,35,-97,41,29,.3,.3", "me:0:180,0,180,61,41,3,3"};
constexpr const char* passes[] = {"under", "over", "default", "index,lalo=30"};

std::string dir;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  ::setenv("zqverrtoout", "1", 1);
  if (std::freopen("/dev/null", "w", stdout) == nullptr) {
    return 1;
  }
  std::string pattern = "/dev/shm/zqvfuzzXXXXXX";
  const char* made = ::mkdtemp(pattern.data());
  if (made == nullptr) {
    return 1;
  }
  dir = made;
  std::atexit([] { std::filesystem::remove_all(dir); });
  std::ofstream(dir + "/a") << "3 60 20 -80 -120 1\n40 -110 50 -90 41 -110\n"
                               "1 50 50 -100 -100 2\n50 -100\n3 0 0 0 0 3\n0 170 5 -170 9 0\n";
  std::ofstream(dir + "/k")
      << "<?xml version=\"1.0\"?><kml>\n<Placemark>\n<name>A</name>\n<Point>\n"
         "<coordinates>-100,40,0</coordinates>\n</Point>\n</Placemark>\n"
         "<coordinates>-110,40,0 -90,45,0 170,0,0</coordinates>\n</kml>\n";
  ZQV::Zqv::setDatabasePath(dir.c_str());
  ZQV::Zqv::setMessageLevel("none");
  ZQV::Zqv::putResrc("device", "meta,/dev/null");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) {
    return 0;
  }
  std::ofstream(dir + "/l.mpl", std::ios::binary)
      .write(reinterpret_cast<const char*>(data + 1),
             static_cast<std::streamsize>(std::min(size - 1, most_text)));
  ZQV::Domain domain;
  domain.set(views[data[0] & 3]);
  ZQV::Plot plot;
  plot.open();
  plot.setDomain(domain);
  ZQV::MapPlot map((std::string(passes[data[0] >> 2 & 3]) + ",mf=l.mpl").c_str());
  map.draw(plot);
  plot.close();
  return 0;
}
