#pragma once

#include <memory>

namespace ZQV {

class KmlData;

/** Reader of KML documents (OGC 07-147r2), plain or compressed by gzip: one list of coordinates
 * after the other, in the order of the document. A document that breaks off, or isn't well formed,
 * gives the lists ahead of the fault. External entities and document types aren't followed, and one
 * of more than 32 MB or 400000 nodes, or with an element of thousands of attributes, ends there. */
class KmlFile {
 public:
  KmlFile();
  KmlFile(const KmlFile&) = delete;
  KmlFile& operator=(const KmlFile&) = delete;
  ~KmlFile();

  /** Reads the document; a plain file only. @return 1; 0 if it can't be read or its root isn't a
   * "kml" */
  int open(const char* name);
  /** @param access  0 reads, nothing else is there. @return 1 or 0 */
  int open(const char* name, int access);
  [[nodiscard]] bool isOpen() const;
  int close();
  /** Starts again at the root. @return 1; 0 if not open */
  int rewind();
  /** The next list. The walk never visits the first child of an element, which in a document
   * formatted with white space is a text; it climbs one level at a time, and goes ten levels deep:
   * deliberate.
   *  @return 1; 0 at the end */
  int read(KmlData& data);

  /** The file begins with "<?xml" or is compressed by gzip. */
  static bool checkType(const char* name);

 private:
  struct Walk;
  std::unique_ptr<Walk> walk;
};

}  // namespace ZQV
