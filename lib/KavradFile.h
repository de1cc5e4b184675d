#pragma once

#include <string>

#include "Date.h"
#include "Domain.h"
#include "File.h"

namespace ZQV {

class Image;

/** A run of equal pixels of a Kavouras mosaic. */
struct KavradPacket {
  int run = 0;  ///< pixels, -1 up to the end of the row
  int val = 0;  ///< level
};

/** Kavouras mosaics: a fixed header and run-length coded rows of the whole country. */
class KavradFile {
 public:
  KavradFile() = default;
  KavradFile(const KavradFile&) = delete;
  KavradFile& operator=(const KavradFile&) = delete;
  ~KavradFile() = default;

  /** @return 1 or 0 */
  int open(const char* name);
  [[nodiscard]] bool isOpen() const { return opened; }
  int rewind();
  int close();

  /** Kind, date and domain; the run data come next. @return 1; 0 if the file is too short */
  int readHeader();
  /** The next run; one code leaves the packet as it was. @return 1; 0 at the end of the data */
  int readPacket(KavradPacket& packet);
  /** A data image with values in dBZ, -150 for level 0, where the second and third kind of echo
   *  have 100 and 200 added; a wrong header gives an empty image. @return 1; 0 if not open */
  int read(Image& image);

  [[nodiscard]] const Domain& getDomain() const { return domain; }
  [[nodiscard]] const Date& getDate() const { return date; }
  [[nodiscard]] const char* getLabel() const { return label.c_str(); }

 private:
  void reset();
  void setValues(Image& image) const;

  File file;
  bool opened = false;
  std::string label;
  Date date;
  int height = 0;
  int width = 0;
  Domain domain;
  int type = 0;   ///< 1 = colour-coded
  int start = 0;  ///< first and last row that the header states
  int end = 0;
  int value = 0;  ///< level of the run at hand
};

}  // namespace ZQV
