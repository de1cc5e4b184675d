#pragma once

#include <limits>
#include <vector>

namespace ZQV {

/** Growable byte buffer with a read position. Readers fill it in blocks, walk it by the position
 * and drop what they used. */
class Buffer {
 public:
  Buffer() = default;
  explicit Buffer(int n) { init(n); }

  /** Drops content and position; capacity n. @return 1 */
  int init(int n);
  /** Capacity n, keeping the bytes that fit. @return 1 */
  int resize(int n);
  /** Grows to n + 2000 if n is above the capacity. @return 1 */
  int check(int n);
  int add(const void* bytes, int n);
  int insert(int at, const void* bytes, int n);
  /** Where the byte at the read position lies. */
  [[nodiscard]] const unsigned char* get() const { return data.data() + ind; }
  /** The byte at the read position + off, 0 if out of range. */
  [[nodiscard]] unsigned char get(int off) const;
  /** Moves the read position. @return 1; 0 if it would leave 0 to size */
  int inc(int n) {
    const long at = static_cast<long>(ind) + n;
    if (at < 0 || at > size || n > std::numeric_limits<int>::max() - size) return 0;
    ind = static_cast<int>(at);
    return 1;
  }
  /** Moves the unread bytes to the start. @return 1 */
  int clearUsed();
  void clear() { size = ind = 0; }
  /** New size; a negative n counts from the end. @return 1; 0 out of range */
  int trunc(int n);
  /** The text stands at off, which counts from the end of the data when negative. */
  [[nodiscard]] bool equal(int off, const char* text) const;

  [[nodiscard]] int getInd() const { return ind; }
  [[nodiscard]] int getSize() const { return size; }
  [[nodiscard]] int getAvail() const { return size - ind; }
  [[nodiscard]] int getMax() const { return static_cast<int>(data.size()); }
  /** The store itself, getMax() bytes, for those who fill it; then setSize(). */
  unsigned char* getData() { return data.data(); }
  [[nodiscard]] const unsigned char* getData() const { return data.data(); }
  /** @return 1; 0 if n is not within 0 to the capacity */
  int setSize(int n);

  /** Writes "Ind: %d Num: %d Max: %d\n". */
  void print() const;
  /** Hex dump of n bytes from the read position + off, from the end for a negative off. */
  void dump(int off, int n) const;

 private:
  int size = 0;
  int ind = 0;
  std::vector<unsigned char> data;
};

}  // namespace ZQV
