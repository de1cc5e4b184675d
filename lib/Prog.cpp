#include "Prog.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "DateTool.h"
#include "ResrcDB.h"
#include "ResrcDBList.h"
#include "ResrcFile.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "Zqv.h"

namespace ZQV {

int Prog::printHelp(const ResrcDBList& keyed, const ResrcDBList& positional,
                    const char* description) {
  if (Zqv::getResrc("help") == nullptr) {
    return 0;
  }
  Zqv::outMessage(1, "%s: %s\n", Zqv::getProgramName(), StrLib::valid(description, ""));
  ResrcDB::printHelp(Zqv::getProgramName(), keyed, positional);
  return 1;
}

int Prog::printProg(int level, const char* name) {
  Zqv::outMessage(level, "      %s (Ver %s)\n\n", StrLib::valid(name, ""), Zqv::getVersion());
  return 1;
}

int Prog::setCommand(const char* text) {
  char word[20];
  if (text == nullptr || std::sscanf(text, "%19s", word) != 1) {
    return 0;
  }
  if (StrLib::equal(word, "set")) {
    char name[20];
    int end = 0;
    if (std::sscanf(text, " set%*[ \t]%19[^ =]%n", name, &end) != 1) {
      Zqv::print("Set resources\n");
      Zqv::printAllResrc();
      Zqv::print("\n");
      return 1;
    }
    const char* rest = text + end;
    while (*rest == ' ' || *rest == '=') {
      rest++;
    }
    Zqv::putResrc(name, rest);
    return 1;
  }
  if (StrLib::equal(text, "exit")) {
    Zqv::exit(Zqv::NOERR);
  }
  return 0;
}

int Prog::prompt(const char* message, char* buffer, int size) {
  if (buffer == nullptr || size < 3) {
    return 0;
  }
  std::vector<char> line(static_cast<size_t>(size) - 1);
  do {
    Zqv::print(message);
    std::fflush(stdout);
    if (std::fgets(line.data(), size - 1, stdin) == nullptr) {
      return 0;
    }
    StrLib::trimWS(line.data());
  } while (setCommand(line.data()) != 0);
  StrLib::copy(buffer, size, line.data());
  return 1;
}

int Prog::prompt(const char* message, String& answer) {
  constexpr int room = 160;
  char buffer[room];
  StrLib::copy(buffer, room, answer.get());
  const int got = prompt(message, buffer, room);
  answer.copy(buffer);
  return got;
}

String Prog::prompt(const char* message) {
  String answer;
  prompt(message, answer);
  return answer;
}

int Prog::readResrcFile(const char* prog, const char* name, const char* tag, const char* path) {
  if (!StrLib::valid(path)) {
    const char* env = std::getenv("zqvdefault");
    path = StrLib::valid(env, ".:/home/zqv/etc:/usr/local/zqv/etc");
  }
  const Strings entries(path, ':');
  ResrcFile file;
  file.set(prog, name);
  if (StrLib::valid(tag)) {
    file.setTag(tag);
  }
  String key;
  String value;
  for (int i = 0; i < entries.getNum(); i++) {
    if (file.open(entries.getString(i)) == 0) {
      continue;
    }
    while (file.getValid(key, value) == 1) {
      Zqv::putResrc(key.get(), value.get());
    }
    file.close();
  }
  Zqv::setMessageLevel(Zqv::getResrc("message"));
  if (Zqv::getResrc("file_path") != nullptr) {
    Zqv::setDatabasePath(Zqv::getResrc("file_path"));
  }
  if (Zqv::getResrc("cur_time") != nullptr) {
    Zqv::setInitTime(static_cast<int>(DateTool::getSeconds(Zqv::getResrc("cur_time"))));
  }
  return 1;
}

}  // namespace ZQV
