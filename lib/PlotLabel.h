#pragma once

#include <cstdio>
#include <string>

namespace ZQV {

/** A label at a corner of the picture. */
struct PlotLabel {
  static constexpr int FIXED = -1;

  /** Writes "Plot label: %d %s %s [%s]\n". */
  void print() const {
    std::printf("Plot label: %d %s %s [%s]\n", layer, locate.c_str(), string.c_str(),
                format.c_str());
  }

  int layer = 0;       ///< plot layer that it belongs to; FIXED stands alone at its place
  std::string locate;  ///< "ul", "uc", "ur", "ll", "lc" or "lr", cut at 9 characters
  std::string string;  ///< cut at 99 characters
  std::string format;  ///< attributes, cut at 49 characters
};

}  // namespace ZQV
