#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <unistd.h>

/** The file of a fuzz target that reads by name: it holds the input at hand and is gone at the end.
 */
inline const char* inputFile(std::string_view text) {
  static const std::string path = "/tmp/zqv.fuzz." + std::to_string(::getpid());
  static const bool removed = std::atexit([] { std::remove(path.c_str()); }) == 0;
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr || !removed) std::abort();
  std::fwrite(text.data(), 1, text.size(), file);
  std::fclose(file);
  return path.c_str();
}
