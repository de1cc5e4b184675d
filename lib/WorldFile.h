#pragma once

namespace ZQV {

class Domain;

/** Where a picture lies, for other programs: a world file beside it (six lines: size of a pixel and
 * place of the upper left pixel's centre) and the projection as well-known text. */
class WorldFile {
 public:
  /** Place of pixel (column, row): (x0 + column dx, y0 + row dy), in the domain's plane. */
  struct Place {
    double x0 = 0;
    double y0 = 0;
    double dx = 0;
    double dy = 0;  ///< below 0 where rows run downward
  };

  /** Writes NAME.gfw or NAME.pgw and NAME.prj beside a picture NAME.gif or NAME.png.
   *  @return 1; 0 with nothing written for a picture on standard output or a plane that no
   *  well-known text describes (diagrams, and satellites in tangents), or if it can't be written */
  static int write(const char* picture, const Domain& domain, const Place& place);
};

}  // namespace ZQV
