#pragma once

namespace ZQV {

class Domain;
class DomainVal;
class Strings;

/** Reads the texts in which users and files state a domain: up to seven values separated by commas,
 * some of which may be left out, a station in place of the centre, or the name of a region. */
class DomainTool {
 public:
  /** Domain::getProj. */
  static int proj(const char* name);
  /** Takes values by a layout: comma-separated keys of proj, plon, clat, clon, nx, ny, dx, dy and
   * id. Values that were taken before one fails stay. @return 1; 0 if the layout doesn't fit; 1
   * with nothing set for a first value of "miss" or "none" */
  static int setParams(DomainVal& val, const Strings& values, const char* format);
  /** Tries all layouts, then a region. Warns about a text that is neither. @return 1 or 0 */
  static int decode(DomainVal& val, const char* text);
  /** The same on a fresh value. @return 1; 0 with the domain left as it was */
  static int decode(Domain& domain, const char* text);
  /** The same for a text that stands in a data file: no region is looked up, and nothing is said
   * about one that is no domain. @return 1 or 0 */
  static int decodeStored(DomainVal& val, const char* text);
  static int decodeStored(Domain& domain, const char* text);
  /** The domain of the resource plot_domain, or if that isn't set of the fallback. @return 1; 0 if
   * there is neither, or the text is wrong */
  static int set(Domain& domain, const char* fallback);
  static int set(Domain& domain) { return set(domain, nullptr); }
};

}  // namespace ZQV
