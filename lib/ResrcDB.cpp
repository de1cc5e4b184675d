#include "ResrcDB.h"

#include <filesystem>
#include <string>
#include <system_error>

#include "ResrcCL.h"
#include "ResrcDBList.h"
#include "ResrcEnv.h"
#include "ResrcFile.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr const char* default_path = ".:/home/zqv/etc:/usr/local/zqv/etc:/etc/zqv";

/** The few resources that steer the rest. */
void readSteering(ResrcCL& line) {
  String key;
  String value;
  int got = 0;
  while ((got = line.getKeyed(key, value)) >= 0) {
    if (got == 0) {
      line.getPosition(value);
      continue;
    }
    if (ResrcCL::compare(key.get(), "name", "na") != 0) {
      Zqv::addResrc("name", value.get(), Resrc::COMMAND_LINE);
    }
    if (key.iequal("default") || key.iequal("df")) {
      Zqv::addResrc("default", value.get(), Resrc::COMMAND_LINE);
    }
  }
}

/** Stores a line under every declared name that it fits. @return how many */
int storeMatches(const ResrcFile& file, const ResrcDBList& list, const String& key,
                 const String& value) {
  int stored = 0;
  for (const ResrcDBItem& item : list) {
    if (file.compare(item.name, key.get())) {
      stored += Zqv::addResrc(item.name, value.get(), Resrc::FILE_SOURCE);
    }
  }
  return stored;
}

void readFile(ResrcFile& file, const ResrcDBList& keyed, const ResrcDBList& positional) {
  String key;
  String value;
  while (file.get(key, value) == 1) {
    if (storeMatches(file, keyed, key, value) + storeMatches(file, positional, key, value) > 0) {
      continue;
    }
    if (file.valid(key.get())) {
      String item;
      ResrcFile::parseName(key.get(), item);
      Zqv::addResrc(item.get(), value.get(), Resrc::FILE_SOURCE);
    }
  }
}

/** Something that was installed with the program: in the program's own tree, wherever that was put,
 * otherwise where it was built for.
 *  @param place  below the prefix, or absolute
 *  @param file  tells a place that has it from another
 *  @return empty if it is nowhere */
std::string installed(const char* place, const char* file) {
  namespace fs = std::filesystem;
  std::error_code failed;
  const fs::path program = fs::read_symlink("/proc/self/exe", failed);
  for (const fs::path& prefix : {program.parent_path().parent_path(), fs::path(ZQV_PREFIX)}) {
    const fs::path found = prefix / place;
    if (!prefix.empty() && fs::is_regular_file(found / file, failed)) {
      return found.string();
    }
  }
  return "";
}

void readFiles(const ResrcDBList& keyed, const ResrcDBList& positional) {
  String path = Zqv::getResrc("default", default_path);
  if (Zqv::getResrc("default") == nullptr) {
    const std::string own = installed(ZQV_ETC, "zqv.cfg");
    if (!own.empty() && !StrLib::hasToken(default_path, ':', own.c_str())) {
      path.append(":");
      path.append(own.c_str());
    }
  }
  const Strings entries(path.get(), ':');
  ResrcFile file(Zqv::resrc);
  String tag;
  for (int i = 0; i < entries.getNum(); i++) {
    if (entries.getChar(i, 0) == '+') {
      tag.copy(entries.getString(i) + 1);
      continue;
    }
    if (file.open(entries.getString(i)) == 0) {
      continue;
    }
    if (tag.valid()) {
      file.setTag(tag.get());
    }
    readFile(file, keyed, positional);
    file.close();
  }
}

void readEnvironment(const ResrcDBList& list) {
  String value;
  for (const ResrcDBItem& item : list) {
    if (ResrcEnv::get(Zqv::resrc, item.name, item.env, value) != 0) {
      Zqv::addResrc(item.name, value.get(), Resrc::ENVIRONMENT);
    }
  }
}

/** Keys that the first pass took. */
bool isSteering(const String& key) {
  return key.valid() && (StrLib::iequal("name", key.get(), key.getLength()) ||
                         key.iequal("default", 7) || key.iequal("df", 2));
}

void storeKeyed(const String& key, const String& value, const ResrcDBList& keyed) {
  // Only the exact short key finds its item; any other key stands for itself, so that an
  // abbreviation of a long name makes a resource of its own: deliberate.
  for (const ResrcDBItem& item : keyed) {
    if (ResrcCL::compare(key.get(), item.name, item.cmdln) == 2) {
      Zqv::addResrc(item.name, value.get(), Resrc::COMMAND_LINE);
      return;
    }
  }
  Zqv::addResrc(key.get(), value.get(), Resrc::COMMAND_LINE);
}

void storePosition(int pos, const String& value, const ResrcDBList& positional) {
  const int last = positional.getNum() - 1;
  const ResrcDBItem* item = positional.get(pos > last ? last : pos);
  if (item == nullptr) {
    return;
  }
  if (Zqv::getResrcType(item->name) == Resrc::COMMAND_LINE) {
    Zqv::appendResrc(item->name, value.get());
  } else {
    Zqv::addResrc(item->name, value.get(), Resrc::COMMAND_LINE);
  }
}

void readCommandLine(ResrcCL& line, const ResrcDBList& keyed, const ResrcDBList& positional) {
  line.rewind();
  String key;
  String value;
  int got = 0;
  while ((got = line.getKeyed(key, value)) >= 0) {
    if (got == 0) {
      const int pos = line.getPosition(value);
      storePosition(pos, value, positional);
    } else if (!isSteering(key)) {
      storeKeyed(key, value, keyed);
    }
  }
}

}  // namespace

int ResrcDB::create(const Strings& args, ResrcDBList& keyed, ResrcDBList& positional) {
  String prog;
  decodeProgramName(args.getString(0), prog);
  Zqv::addResrc("prog", prog.get(), Resrc::BUILTIN);
  Zqv::addResrc("name", prog.get(), Resrc::BUILTIN);
  Zqv::setProgramName(prog.get());

  String value;
  if (ResrcEnv::get(Zqv::resrc, "default", nullptr, value) != 0) {
    Zqv::addResrc("default", value.get(), Resrc::ENVIRONMENT);
  }
  ResrcCL line(args);
  readSteering(line);
  readFiles(keyed, positional);
  readEnvironment(keyed);
  readEnvironment(positional);
  readCommandLine(line, keyed, positional);

  if (Zqv::getResrc("file_path") == nullptr) {
    const std::string own = installed(ZQV_DATA, "zqv.clr");
    if (!own.empty()) {
      Zqv::addResrc("file_path", own.c_str(), Resrc::FILE_SOURCE);
    }
  }
  Zqv::setMessageLevel(Zqv::getResrc("message"));
  if (Zqv::getResrc("file_path") != nullptr) {
    Zqv::setDatabasePath(Zqv::getResrc("file_path"));
  }
  if (Zqv::isDebug(5)) {
    Zqv::printAllResrc();
  }
  return 1;
}

int ResrcDB::decodeProgramName(const char* path, String& name) {
  return name.copy(StrLib::valid(path) ? path + StrLib::lastIndex(path, '/') + 1 : "");
}

int ResrcDB::printHelp(const char* prog, const ResrcDBList& keyed, const ResrcDBList& positional) {
  Zqv::outMessage(1, "%s syntax (version:%s)\n", StrLib::valid(prog, ""), Zqv::getVersion());
  Zqv::outMessage(1, "   %s [options...]\n", StrLib::valid(prog, ""));
  Zqv::outMessage(1, "Keyed options...\n");
  Zqv::outMessage(1, " -df file...  Resource/defaults file name\n");
  Zqv::outMessage(1, " -na name     Program name\n");
  for (const ResrcDBItem& item : keyed) {
    Zqv::outMessage(1, " %s\n", item.help);
  }
  Zqv::outMessage(1, "Positional options...\n");
  for (const ResrcDBItem& item : positional) {
    Zqv::outMessage(1, " %s\n", item.help);
  }
  return 1;
}

}  // namespace ZQV
