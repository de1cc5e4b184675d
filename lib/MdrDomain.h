#pragma once

#include "SiteDomain.h"

namespace ZQV {

/** The national grid of MDR echoes, 113 by 89 cells; a site is cell (12, 12) of its box. */
class MdrDomain : public SiteDomain {
 public:
  MdrDomain() : SiteDomain(113, 89, 0.47624F, 1, 12) {}
};

}  // namespace ZQV
