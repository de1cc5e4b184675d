#pragma once

namespace ZQV {

class String;

/** Path lists separated by ":", existence and size tests, home directories. */
class FileTool {
 public:
  /** Begins with "http://", "/", "." or "~". */
  static bool isFullPath(const char* name);
  /** The name in the first directory of paths where such a file exists, else in the last one tried;
   * a full path, a standard stream and a name without paths stand as they are.
   *  @return 1 if out exists, else 0 */
  static int addPath(const char* paths, const char* name, String& out);
  static int checkPath(const char* paths, const char* name);
  /** For writing: the name in the first directory that exists. @return 1 if one does */
  static int addOutPath(const char* paths, const char* name, String& out);
  /** Entries of the list. An empty entry ends the walk, and the rest counts as the last entry. */
  static int numPath(const char* paths);
  /** Entry i. @return 1; 0 out of range, with out empty */
  static int getPath(const char* paths, int i, String& out);
  /** Adds "/" unless the text is empty or ends with one. */
  static int addPathDelim(String& path);
  /** Expands "~" and "~user"; an unknown user leaves the text. @return 1 */
  static int addUserPath(const char* name, String& out);

  static bool exist(const char* name);
  /** "-", or "std" or "stdn" in any case. */
  static bool isStdio(const char* name);
  static bool isDir(const char* name);
  static bool isFile(const char* name);
  static bool isFifo(const char* name);
  static bool isDevice(const char* name);
  /** Bytes, -1 if there is no such file. */
  static long getSize(const char* name);
  /** Seconds since 1970, -1 if there is no such file. */
  static long getModTime(const char* name);
  static int remove(const char* name);
  /** Makes every directory of path up to its last "/". Errors are ignored. @return 1 */
  static int makeDir(const char* path);
};

}  // namespace ZQV
