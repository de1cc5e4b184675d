#pragma once

namespace ZQV {

/** A shared library that is loaded when it is needed, so that runs that do without it neither pay
 * for it nor need it installed. It stays loaded to the end of the run, as libraries keep memory
 * that only their code knows of. */
class DynLib {
 public:
  DynLib() = default;
  DynLib(const DynLib&) = delete;
  DynLib& operator=(const DynLib&) = delete;
  ~DynLib();

  /** @param name  the library's file name with its version, looked up as the linker does
   *  @return 1; 0 if it can't be loaded */
  [[nodiscard]] int open(const char* name);
  [[nodiscard]] bool isOpen() const { return handle != nullptr; }
  /** Finds a function by its name. @return 1; 0 if the library hasn't got it, function is null then
   */
  template <typename Function>
  int find(const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(find(name));
    return function != nullptr ? 1 : 0;
  }

 private:
  void* find(const char* name);

  void* handle = nullptr;
};

}  // namespace ZQV
