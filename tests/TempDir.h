#pragma once

#include <filesystem>
#include <fstream>
#include <string>

/** A directory for one test, removed with what is in it. */
class TempDir {
 public:
  TempDir() {
    std::string form = (std::filesystem::temp_directory_path() / "zqvtestXXXXXX").string();
    path = ::mkdtemp(form.data());
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }

  /** Path of an entry. */
  [[nodiscard]] std::string at(const std::string& name) const { return path + "/" + name; }
  /** Writes a file, making directories as needed. @return its path */
  std::string write(const std::string& name, const std::string& text) const {
    const std::filesystem::path file = at(name);
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file.string();
  }
  [[nodiscard]] std::string read(const std::string& name) const {
    std::ifstream file(at(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  std::string path;
};
