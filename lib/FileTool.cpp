#include "FileTool.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "StrLib.h"
#include "String.h"

namespace ZQV {

namespace {

/** stat() after "~" expansion. */
bool status(const char* name, struct stat& st) {
  if (!StrLib::valid(name)) {
    return false;
  }
  String path;
  FileTool::addUserPath(name, path);
  return ::stat(path.get(), &st) == 0;
}

bool hasMode(const char* name, mode_t kind) {
  struct stat st {};
  return status(name, st) && (st.st_mode & S_IFMT) == kind;
}

/** Where the entry that starts at text ends: at the next ":"; or at the end of the text if the
 * entry is empty, since that ends the walk and the rest counts as the last entry. */
const char* entryEnd(const char* text) {
  const char* colon = std::strchr(text, ':');
  return colon == nullptr || colon == text ? text + std::strlen(text) : colon;
}

}  // namespace

bool FileTool::isFullPath(const char* name) {
  return name != nullptr &&
         (*name == '/' || *name == '.' || *name == '~' || StrLib::equal(name, "http://", 7));
}

int FileTool::addPath(const char* paths, const char* name, String& out) {
  out.clear();
  if (name == nullptr) {
    return 0;
  }
  const std::string wanted = name;  // out may hold the name
  const std::string list = StrLib::acopy(paths);
  if (isStdio(wanted.c_str()) || isFullPath(wanted.c_str()) || list.empty()) {
    out.copy(wanted.c_str());
    return exist(out.get()) ? 1 : 0;
  }
  const int num = numPath(list.c_str());
  for (int i = 0; i < num; i++) {
    getPath(list.c_str(), i, out);
    addPathDelim(out);
    out.append(wanted.c_str());
    if (exist(out.get())) {
      return 1;
    }
  }
  return 0;
}

int FileTool::checkPath(const char* paths, const char* name) {
  String found;
  return addPath(paths, name, found);
}

int FileTool::addOutPath(const char* paths, const char* name, String& out) {
  out.clear();
  if (name == nullptr) {
    return 0;
  }
  const std::string wanted = name;
  const std::string list = StrLib::acopy(paths);
  const bool stands = isStdio(wanted.c_str()) || isFullPath(wanted.c_str()) || list.empty();
  const int num = stands ? 0 : numPath(list.c_str());
  for (int i = 0; i < num; i++) {
    getPath(list.c_str(), i, out);
    if (isDir(out.get())) {
      addPathDelim(out);
      out.append(wanted.c_str());
      return 1;
    }
  }
  out.copy(wanted.c_str());
  return stands ? 1 : 0;
}

int FileTool::numPath(const char* paths) {
  int num = 0;
  for (const char* p = paths; StrLib::valid(p); num++) {
    const char* end = entryEnd(p);
    p = *end == '\0' ? end : end + 1;
  }
  return num;
}

int FileTool::getPath(const char* paths, int i, String& out) {
  const std::string list = StrLib::acopy(paths);
  out.clear();
  const char* p = list.c_str();
  for (int k = 0; i >= 0 && *p != '\0'; k++) {
    const char* end = entryEnd(p);
    if (k == i) {
      return out.copy(std::string(p, end).c_str());
    }
    p = *end == '\0' ? end : end + 1;
  }
  return 0;
}

int FileTool::addPathDelim(String& path) {
  if (path.valid() && path.getChar(-1) != '/') {
    path.append('/');
  }
  return 1;
}

int FileTool::addUserPath(const char* name, String& out) {
  if (name == nullptr || *name != '~') {
    return out.copy(name == nullptr ? "" : name);
  }
  const std::string text = name;
  const size_t slash = std::min(text.find('/'), text.size());
  const std::string user = text.substr(1, slash - 1).substr(0, 19);
  const passwd* entry = user.empty() ? ::getpwuid(::getuid()) : ::getpwnam(user.c_str());
  if (entry == nullptr || entry->pw_dir == nullptr) {
    return out.copy(text.c_str());
  }
  return out.copy((entry->pw_dir + text.substr(slash)).c_str());
}

bool FileTool::exist(const char* name) {
  struct stat st {};
  return isStdio(name) || status(name, st);
}

bool FileTool::isStdio(const char* name) {
  return StrLib::equal(name, "-") || StrLib::iequal(name, "std") || StrLib::iequal(name, "stdn");
}

bool FileTool::isDir(const char* name) {
  return hasMode(name, S_IFDIR);
}

bool FileTool::isFile(const char* name) {
  return hasMode(name, S_IFREG);
}

bool FileTool::isFifo(const char* name) {
  return hasMode(name, S_IFIFO);
}

bool FileTool::isDevice(const char* name) {
  return hasMode(name, S_IFCHR) || hasMode(name, S_IFBLK);
}

long FileTool::getSize(const char* name) {
  struct stat st {};
  return status(name, st) ? static_cast<long>(st.st_size) : -1;
}

long FileTool::getModTime(const char* name) {
  struct stat st {};
  return status(name, st) ? static_cast<long>(st.st_mtime) : -1;
}

int FileTool::remove(const char* name) {
  String path;
  addUserPath(name, path);
  return path.valid() && ::unlink(path.get()) == 0 ? 1 : 0;
}

int FileTool::makeDir(const char* path) {
  constexpr int max_path = 199;
  constexpr mode_t mode = 0755;
  std::string text = StrLib::acopy(path).substr(0, max_path);
  std::replace(text.begin(), text.end(), '\\', '/');
  for (size_t slash = text.find('/'); slash != std::string::npos;
       slash = text.find('/', slash + 1)) {
    if (slash > 0) {
      ::mkdir(text.substr(0, slash).c_str(), mode);
    }
  }
  return 1;
}

}  // namespace ZQV
