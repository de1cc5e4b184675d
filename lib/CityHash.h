#pragma once

#include "CityData.h"
#include "Hash.h"

namespace ZQV {

class Domain;

/** What a search of a CityHash gives: a station, and room for what a caller ties to it. */
class CityHashData {
 public:
  void init() { *this = CityHashData(); }

  CityData data;
  int size = 0;         ///< the caller's, 0 after a search
  void* ptr = nullptr;  ///< the caller's, never owned, absent after a search
};

/** The stations of a city file in memory, for many look-ups: by identifier (table 0), by WMO number
 * as
 *  "%5.5ld" (1), and by place as "%5.0f%6.0f" of ten times latitude and longitude (2). */
class CityHash : public Hash {
 public:
  CityHash() = default;
  /** All stations of the file. */
  explicit CityHash(const char* file);
  /** Those within three grid spacings of the domain, with a priority of at most max_prior. */
  CityHash(const char* file, Domain& domain, int max_prior);

  /** Fills the table anew. A null domain takes all stations. @return 1; 0 if there is no such file
   */
  int setup(const char* file, Domain* domain, int max_prior);

  /** Looks the key up in the table that its form asks for: five digits are a WMO number, six
   * characters from "b" on a buoy, a letter, a letter or digit and three digits a code with a WMO
   * block, anything else an identifier. @return 1; 0 if it isn't there */
  int get(const char* key, CityHashData& out) const;
  /** The same in table k. */
  int get(int k, const char* key, CityHashData& out) const;

 private:
  int prior = 9;
};

}  // namespace ZQV
