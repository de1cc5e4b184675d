#pragma once

#include <cstdio>

#include "Resrc.h"

namespace ZQV {

class String;

/** What is global to the process: the message mask, the data path, the program name, the resource
 *  store, clock operations and the version. Static operations only. */
class Zqv {
 public:
  /** Process exit status. */
  enum Error {
    NOERR = 0,
    NORUN = 1,
    MISC = 2,
    NOMEMORY = 3,
    NOGRAPH = 4,
    NOINIT = 5,
    NOFILE = 6,
    NODBASE = 7,
    NOWRITE = 8,
    NOINPUT = 9,
    NODATA = 10
  };

  /** The mask becomes 2 to the power n, minus 1. @return 1 */
  static int setMessageLevel(int n);
  /** Level names separated by commas ("mess,+debug3"): a plain name replaces the mask, "+" sets the
   * one bit of the level, "-" flips it. An absent or empty text changes nothing. @return 1; 0 if
   * nothing was given */
  static int setMessageLevel(const char* text);
  /** Bit n - 1 of the mask. */
  static bool checkMessage(int n);
  /** Any of the debug bits 12 to 19. */
  static bool isDebug();
  /** outDebug(n) writes. */
  static bool checkDebug(int n);
  /** Bit n + 12 of the mask, one above what outDebug(n) tests: deliberate. */
  static bool isDebug(int n);

  /** To standard output if bit 0 is set. No prefix, newline or time stamp is added. @return 1 if
   * written */
  static int outMessage(const char* format, ...) __attribute__((format(printf, 1, 2)));
  static int outMessage(int n, const char* format, ...) __attribute__((format(printf, 2, 3)));
  /** To standard output if bit 12 (n: bit n + 11) is set. */
  static int outDebug(const char* format, ...) __attribute__((format(printf, 1, 2)));
  static int outDebug(int n, const char* format, ...) __attribute__((format(printf, 2, 3)));
  /** Always; to standard error, or to standard output if the environment has zqverrtoout. */
  static int outWarning(const char* format, ...) __attribute__((format(printf, 1, 2)));
  static int outError(const char* format, ...) __attribute__((format(printf, 1, 2)));
  static int print(const char* text);

  static int setProgramName(const char* text);
  /** "ZQV" as long as no name was set. */
  static const char* getProgramName();
  /** The path of the package's data files, directories separated by ":". */
  static int setDatabasePath(const char* path);
  /** Empty as long as nothing was set. */
  static const char* getDatabasePath();
  /** A fixed time, seconds since 1970, that stands for the present in the search for the latest
   * file; Const::MISS for none. */
  static int setInitTime(int t);
  static int getInitTime();

  static int pause();
  static int sleep(float seconds);
  /** Seconds since 1970 with microseconds. */
  static double getTime();
  /** Virtual memory of the process in bytes as the system reports it; 0 if it can't be read. */
  static int getVirtMem();
  [[noreturn]] static void exit(Error status);
  static const char* getVersion();
  static const char* getComputerName();

  /** The resource store. Absent if not set, the empty text for a switch without value. */
  static const char* getResrc(const char* name);
  static const char* getResrc(const char* name, const char* fallback);
  static int getResrc(const char* name, int fallback);
  static float getResrc(const char* name, float fallback);
  static int addResrc(const char* name, const char* value, int type);
  static int putResrc(const char* name, const char* value);
  /** Appends with a newline between. */
  static int appendResrc(const char* name, const char* value);
  static int getResrcType(const char* name);
  static int printAllResrc();

  /** Keeps the first error of the run; later ones don't change it. */
  static void setError(Error e);
  /** The error of an input that couldn't be opened: NODATA for a file that can be read and is none
   * of its kind, NOFILE for any other. */
  static void setFileError(const char* name);
  /** From here on all that is written to standard output, messages first of all, goes to standard
   * error, so that a picture has the stream for itself. @return 1 or 0 */
  static int divertOutput();
  /** Where a file named "-" is written: standard output, wherever messages go. */
  static std::FILE* getOutput();

  static Error error;  ///< the first error, NOERR without one; status of a run that asks for it
  static Resrc resrc;  ///< the one store of the process

 private:
  static int message_mask;
  static int init_time;
};

}  // namespace ZQV
