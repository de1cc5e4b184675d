#pragma once

#include "SiteDomain.h"

namespace ZQV {

/** The national grid of RCM echoes, 452 by 356 cells, four to a cell of MdrDomain each way. A site
 * is put on every fourth, and is cell (48, 48) of its box. */
class RcmDomain : public SiteDomain {
 public:
  RcmDomain() : SiteDomain(452, 356, 0.11906F, 4, 48) {}
};

}  // namespace ZQV
