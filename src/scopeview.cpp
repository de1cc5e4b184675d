// The entry of scopeview: resources, file and domain, plot.

#include "ScopeView.h"

#include <csignal>

#include "Domain.h"
#include "DomainTool.h"
#include "Figure.h"
#include "Prog.h"
#include "ResrcDB.h"
#include "ResrcDBList.h"
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

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a pipe whose reader dies is a failed write, not the end

  ResrcDBList keyed;
  ResrcDBList positional;
  declareResources(keyed, positional);
  const Strings args(argc, argv);
  ResrcDB::create(args, keyed, positional);
  if (Prog::printHelp(keyed, positional, "This program displays NIDS radar data") != 0) {
    Zqv::exit(Zqv::NOERR);
  }
  Prog::printProg("SCOPE VIEWER");

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
  return 0;
}
