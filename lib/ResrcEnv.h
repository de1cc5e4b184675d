#pragma once

namespace ZQV {

class Resrc;
class String;

/** Finds resources in the environment. */
class ResrcEnv {
 public:
  /** Looks for "zqv_PROG_NAME" as the program and its name have it, then for the short name env,
   * then for "zqvNAME". A variable with the empty value counts as found.
   *  @param env  may be absent. @return 1 with the value, or 0 */
  static int get(const Resrc& store, const char* name, const char* env, String& value);
};

}  // namespace ZQV
