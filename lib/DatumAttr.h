#pragma once

#include "Const.h"

namespace ZQV {

/** How a datum is drawn, as a short text says it: "value,ur,fm=%.1f,co=red". What the text doesn't
 * name is unset: Const::MISS, or an empty text. Texts are fixed fields: longer ones are cut. */
class DatumAttr {
 public:
  DatumAttr() = default;
  explicit DatumAttr(const char* text) { parse(text); }

  /** Unsets everything. */
  void init() { *this = DatumAttr(); }
  /** Sets what the text names. Its items are separated by commas, case doesn't matter, and the
   * first row that fits an item acts:
   *  - "%..." or "fm=": number format
   *  - a type: data, value, text, mark, cloud, wbarb, cbarb, dbarb, vect, avect, track, symb, wx,
   *    line
   *  - a position: a row (u, t, c, b, l from above to below) and a column (l, c, r), as in "ur"
   *  - "xy=" and two numbers, the offset in columns and rows of the positions u and r
   *  - rs= co= hi= sc= wi= sh= fo= te= exp= sf= mn= mx= sk=: the field of that name; a scale below
   *    0.01 or above 1000 is 1
   *  - "ta=": alignment, see setAlign()
   *  - "mk=": marker by name or number
   *  - an item without "=": colour
   *  @return 1 */
  int parse(const char* text);
  /** Cut at 19 characters. */
  void setColor(const char* name);
  /** Cut at 9 characters. */
  void setForm(const char* text);
  /** Marker by the beginning of its name, in any case; any other text is read as a number. */
  void setMarker(const char* name);
  /** Writes all attributes in one line. */
  void print() const;

  int type = Const::MISS;      ///< what the datum is, Datum::Type
  float scale = Const::FMISS;  ///< factor of all sizes
  float dx = Const::FMISS;     ///< offset, in shares of the plot's height
  float dy = Const::FMISS;
  int halign = Const::MISS;  ///< alignment of texts, Graph::setTextAlign
  int valign = Const::MISS;
  float height = Const::FMISS;  ///< factor of the height of texts and marks
  float width = Const::FMISS;   ///< of lines
  float expan = Const::FMISS;   ///< expansion of texts, and size of arrow heads
  int shadow = Const::MISS;     ///< steps of the drop shadow
  int marker = Const::MISS;
  float min = Const::FMISS;  ///< not used
  float max = Const::FMISS;  ///< hours of a track
  int skip = Const::MISS;    ///< not used
  char form[10] = "";        ///< number format
  char color[20] = "";
  char font[120] = "";
  char symbol[40] = "";  ///< symbol file
  char resrc[20] = "";   ///< not used

 private:
  bool parseType(const char* item);
  bool parsePosition(const char* item);
  bool parseField(const char* item);
  void setOffset(const char* numbers);
  void setAlign(const char* text);
};

}  // namespace ZQV
