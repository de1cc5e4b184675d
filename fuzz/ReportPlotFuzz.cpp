// Any bytes as a coded report, drawn with all its items. The first byte chooses the kind of report
// and how it is drawn, the rest is the file.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "Domain.h"
#include "InputFile.h"
#include "MdrPlot.h"
#include "Plot.h"
#include "RcmPlot.h"
#include "Zqv.h"

namespace {

using namespace ZQV;

constexpr const char* inputs[] = {"site", "mos", "mosg"};
constexpr const char* params[] = {"site,dist=100", "ramp=45:150:30:150,filter", "echo,ramp=50",
                                  "noclar,min_hgt,num_plt=2,clutter=50"};
std::string dir;

template <class Renderer>
void drawReport(const char* file, int how, const char* variables) {
  Domain domain;
  domain.set(how % 2 == 0 ? "ps:90:-105,36,-97,91,61,.12,.12" : "latlon,40,-100,41,41,1,1");
  Plot plot;
  plot.open();
  plot.setDomain(domain);
  Renderer renderer;
  renderer.setInput(inputs[how % 3]);
  renderer.setParam(params[how / 3 % 4]);
  renderer.setVariable(variables);
  renderer.setFilename(file);
  renderer.getDomain(domain);
  renderer.draw(plot);
  plot.close();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  ::setenv("zqverrtoout", "1", 1);
  if (std::freopen("/dev/null", "w", stdout) == nullptr) return 1;
  std::string pattern = "/tmp/zqvfuzzXXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) return 1;
  dir = pattern;
  std::atexit([] { std::filesystem::remove_all(dir); });
  std::ofstream(dir + "/rad.cty")
      << "Oklahoma City   OK US TLX -1-  35.3334  -97.2778  390 -9999 1\n";
  Zqv::setDatabasePath(dir.c_str());
  Zqv::setMessageLevel("none");
  Zqv::putResrc("device", "meta,/dev/null");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const char* file = inputFile({reinterpret_cast<const char*>(data + 1), size - 1});
  if (data[0] % 2 == 0) {
    drawReport<MdrPlot>(file, data[0] / 2,
                        "city,stat,etop,area,pr_amv,pr_cmv,comp,pr_typ,city,city,pr_tnd");
  } else {
    drawReport<RcmPlot>(file, data[0] / 2,
                        "city,stat,mode,etop:un=km,tvs,meso,cid,cstat,ctop,hail,cdir,cspd,cmvmt,"
                        "storm");
  }
  return 0;
}
