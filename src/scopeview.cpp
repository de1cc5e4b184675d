// The entry of scopeview: resources, file and domain, plot.

#include "ScopeView.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

#include "Domain.h"
#include "DomainTool.h"
#include "Figure.h"
#include "Prog.h"
#include "ResrcDB.h"
#include "ResrcDBList.h"
#include "StrLib.h"
#include "Strings.h"
#include "Zqv.h"
#include "ZqvResrc.h"

using namespace ZQV;

namespace {

/** What the program understands, in the order of its help text. */
void declareResources(ResrcDBList& keyed, ResrcDBList& positional) {
  using Id = ZqvResrc;
  for (const int id :
       {Id::GENERAL, Id::PATHS, Id::FILES, Id::INPUT_OUTPUT, Id::TIME, Id::DOMAINS, Id::IDENTIFIER,
        Id::TYPE, Id::VARIABLE, Id::CITY_MAP, Id::PLOTTING, Id::COLORS, Id::DISPLAY}) {
    ZqvResrc::add(keyed, id);
  }
  ZqvResrc::add(positional, Id::FILENAME);
}

/** Options of this program alone, which are no resources. */
struct OwnOptions {
  bool version = false;
  bool strict = false;  ///< the status of the run is its first error
};

/** Takes the own options out of the arguments. */
OwnOptions takeOwn(std::vector<char*>& args) {
  OwnOptions own;
  const auto take = [&args](std::initializer_list<const char*> names) {
    return std::erase_if(args, [&](const char* arg) {
             return std::any_of(names.begin(), names.end(),
                                [arg](const char* name) { return StrLib::equal(arg, name); });
           }) != 0;
  };
  own.version = take({"-version", "--version"});
  own.strict = take({"-strict"});
  return own;
}

/** The picture, on whatever device, goes to standard output. */
bool drawsToOutput() {
  for (const char* name : {"device", "output"}) {
    std::string text = StrLib::valid(Zqv::getResrc(name), "");
    std::replace(text.begin(), text.end(), ':', ',');
    if (StrLib::hasToken(text.c_str(), ',', "-")) {
      return true;
    }
  }
  return false;
}

/** One picture or loop, from the resources to the last frame. */
void run() {
  ScopeView scopeview;
  scopeview.setFilename();
  Domain domain;
  if (DomainTool::set(domain) == 0) {
    scopeview.getDomain(domain);
  }
  scopeview.setMap(1);

  Figure figure;
  figure.open();
  figure.startPlot(domain);
  figure.addDrawing(scopeview);
  figure.endPlot();
  figure.manage();
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a pipe whose reader dies is a failed write, not the end

  std::vector<char*> given(argv, argv + argc);
  const OwnOptions own = takeOwn(given);
  if (own.version) {
    std::printf("scopeview %s\n", Zqv::getVersion());
    return 0;
  }

  ResrcDBList keyed;
  ResrcDBList positional;
  declareResources(keyed, positional);
  const Strings args(static_cast<int>(given.size()), given.data());
  ResrcDB::create(args, keyed, positional);
  if (Prog::printHelp(keyed, positional, "This program displays NIDS radar data") != 0) {
    Zqv::exit(Zqv::NOERR);
  }
  if (drawsToOutput()) {
    Zqv::divertOutput();
  }
  Prog::printProg("SCOPE VIEWER");

  run();
  return own.strict ? Zqv::error : Zqv::NOERR;
}
