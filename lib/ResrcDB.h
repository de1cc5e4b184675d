#pragma once

namespace ZQV {

class ResrcDBList;
class String;
class Strings;

/** Fills the store of resources at start, each source over the one before: built in, resource
 * files, environment, command line. */
class ResrcDB {
 public:
  /** @param args  the argument vector, program name first. @return 1 */
  static int create(const Strings& args, ResrcDBList& keyed, ResrcDBList& positional);
  /** The text after the last "/". @return 1 */
  static int decodeProgramName(const char* path, String& name);
  /** Writes the help text at message level 1. @return 1 */
  static int printHelp(const char* prog, const ResrcDBList& keyed, const ResrcDBList& positional);
};

}  // namespace ZQV
