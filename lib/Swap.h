#pragma once

namespace ZQV {

class File;

/** Byte order of a file format: swaps in place where the machine's order differs. */
class Swap {
 public:
  enum Order { NoSwap = -1, DataStand = 1, DataLittle = 2 };

  Swap() { init(DataStand); }
  explicit Swap(int order) { init(order); }
  /** @param order  NoSwap, DataStand (big-endian data) or DataLittle. @return 1 */
  int init(int order);
  /** Swap one or n items in place. @return 1; 0 if there is nothing to swap */
  int swap2(void* data, int n = 1) const;
  int swap4(void* data, int n = 1) const;
  int swap8(void* data, int n = 1) const;

  /** Read one item and swap it. @return what File::read gave; a short read isn't swapped */
  int readDouble(File& file, double& v) const;
  int readFloat(File& file, float& v) const;
  int readInt4(File& file, int& v) const;
  int readUInt4(File& file, unsigned& v) const;
  int readInt2(File& file, short& v) const;
  int readUInt2(File& file, unsigned short& v) const;
  int writeFloat(File& file, float v) const;
  int writeInt4(File& file, int v) const;
  int writeInt2(File& file, short v) const;

 private:
  bool type = false;  ///< swapping is to be done
};

}  // namespace ZQV
