#pragma once

namespace ZQV {

class CityData;
class EarthPoint;
class String;
class Strings;

/** Look-ups in city files. Each search reads the file anew: a plot makes only a few. */
class CityTool {
 public:
  /** Full name of a city file: name, or if absent the resource city_file, or "sao.cty", in the data
   * path.
   *  @return 1; 0 for "none" in any case */
  static int getFilename(const char* name, String& out);
  /** The first station whose identifier, name or WMO number ("%5.5ld") equals key, ignoring case.
   *  @return 1 if found */
  static int search(const char* name, const char* key, CityData& data);
  /** Its latitude and longitude; missing if there is none. @return 1 if found */
  static int locate(const char* name, const char* key, EarthPoint& point);
  /** Index of the first key that fits the station: five characters its WMO number, any key its
   * identifier, five and more the beginning of its name, ignoring case. @return -1 if none does */
  static int compareData(const Strings& keys, const CityData& data);

  /** WMO number of a code of a two-character block and three digits ("EN001" is 1001).
   *  @return 1; 0 if there is no such block, or the number lies outside it */
  static int toWmo(const char* id, long& wmo);
  /** The other way. @return 1; 0 if the number is in no block */
  static int toId(long wmo, String& id);
};

}  // namespace ZQV
