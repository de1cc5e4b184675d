#pragma once

namespace ZQV {

class ResrcDBList;
class String;

/** Start-up chores that all programs share: the banner, the help text, the prompt. */
class Prog {
 public:
  /** If the resource "help" is set, writes the help text. @return 1 if it did: the caller then
   * exits; else 0 */
  static int printHelp(const ResrcDBList& keyed, const ResrcDBList& positional,
                       const char* description);
  /** Writes the banner at a message level, 4 by default. @return 1 */
  static int printProg(int level, const char* name);
  static int printProg(const char* name) { return printProg(4, name); }

  /** Carries out a command word of a prompt: "set [NAME[=]VALUE]", "exit".
   *  @return 1 if the text was a command, else 0 */
  static int setCommand(const char* text);
  /** Writes the message and reads a line of at most size - 2 characters, without trailing white
   * space; a command is carried out and the prompt comes again. At the end of input the buffer
   * keeps its content.
   *  @return 1; 0 at the end of input */
  static int prompt(const char* message, char* buffer, int size);
  /** The same with room for 158 characters. */
  static int prompt(const char* message, String& answer);
  static String prompt(const char* message);

  /** Reads resource files for a program that has no list of known resources: every line that fits
   * prog and name is stored. @param tag   defined for all files, may be absent
   *  @param path  files and directories separated by ":"; absent means the standard places, which
   * the environment variable zqvdefault replaces. @return 1 */
  static int readResrcFile(const char* prog, const char* name, const char* tag, const char* path);
  static int readResrcFile(const char* prog, const char* name) {
    return readResrcFile(prog, name, nullptr, nullptr);
  }
  static int readResrcFile(const char* prog) { return readResrcFile(prog, prog); }
};

}  // namespace ZQV
