#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace quillpress::harness {

// The functions that a loaded module imports by name, whichever DLL they come from. What is written here
// redirects the calls of this one module; the test program and Windows itself keep the real functions.
class ImportTable {
 public:
  explicit ImportTable(HMODULE module);

  [[nodiscard]] bool contains(const std::string& name) const { return entries_.count(name) != 0; }

  // REQUIRES: contains(name).
  void redirect(const std::string& name, void* function);
  void restore(const std::string& name);

 private:
  // One name may be imported from two DLLs.
  struct Entry {
    void** address;
    void* original;
  };

  std::map<std::string, std::vector<Entry>> entries_;
};

}  // namespace quillpress::harness
