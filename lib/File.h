#pragma once

#include <cstddef>
#include <cstdio>

#include "FileAttr.h"

namespace ZQV {

class Buffer;
class String;

/** Plain file, pipe or standard stream behind one interface. "-" is a standard stream, a name
 * beginning
 *  "|" a pipe, a leading "~" a home directory. Operations return 0 on failure and never report;
 * read() gives -1 where there is nothing to read from. Closes what it opened when destroyed. */
class File : public FileAttr {
 public:
  File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File();

  /** @param mode  "r", "w" or "a", with "p" ahead to ask for a pipe
   *  Missing directories are made for writing. @return 1; 0 if it can't be opened */
  int open(const char* name, const char* mode);
  /** @param mode  0 reads, 1 writes, 2 appends */
  int open(const char* name, int mode);
  /** Opens for reading a name that was found inside a data file: a plain file only, never a pipe, a
   *  standard stream or a device. @return 1 or 0 */
  int openPlain(const char* name);
  [[nodiscard]] bool isOpen() const { return opened; }
  [[nodiscard]] bool isPipe() const { return type == 1; }
  /** Standard streams are left open. @return 1; 0 if not open */
  int close();
  /** @return 1; 0 if not open or a standard stream */
  int rewind();
  /** True at the end of the file, and when not open. */
  [[nodiscard]] bool endFile() const;

  /** Reads up to size - 1 characters, up to and including a newline, and terminates. A longer line
   * comes in pieces. @return the length, 0 at the end of the file */
  int getLine(char* buffer, int size);
  /** The same up to the capacity of the String less one. */
  int getLine(String& buffer);
  /** Skips to the end of the line. @return 1; 0 at the end of the file */
  int skipLine();
  int scanf(const char* format, ...) __attribute__((format(scanf, 2, 3)));
  int printf(const char* format, ...) __attribute__((format(printf, 2, 3)));
  /** Writes a text as it stands. @return characters written */
  int puts(const char* text);

  /** @return elements (bytes) read; -1 without a stream or on a pipe opened for writing */
  int read(void* data, size_t size, size_t n);
  int read(void* data, size_t n);
  /** The next byte, for readers of short codes; -1 where there is none. */
  [[nodiscard]] int getByte() {
    return opened && !(type == 1 && access == 1) ? ::getc_unlocked(fp) : -1;
  }
  /** Fills the buffer up to n bytes in all. @return its new size, -1 without a stream */
  int read(Buffer& buffer, int n);
  /** Fills the buffer to its capacity. @return its new size, -1 without a stream */
  int read(Buffer& buffer);
  int write(const void* data, size_t size, size_t n);
  int write(const void* data, size_t n);
  /** @return 1 or 0 */
  int seek(long off, int whence);
  int seek(long off) { return seek(off, SEEK_SET); }
  [[nodiscard]] long tell() const;
  int flush();
  [[nodiscard]] int getShare() const { return shared; }
  void setShare(int n) { shared = n; }

 private:
  int attach(std::FILE* stream);

  int type = 0;
  int stype = 0;
  std::FILE* fp = nullptr;
  bool opened = false;
  int access = 0;
  int shared = 1;
};

}  // namespace ZQV
