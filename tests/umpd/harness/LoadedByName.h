#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// The functions that the library loads by name while it runs. DLLs are meant by their base name, in any
// case, whatever path the library asks for them with.
class LoadedByName {
 public:
  explicit LoadedByName(Library& library);
  LoadedByName(const LoadedByName&) = delete;
  LoadedByName& operator=(const LoadedByName&) = delete;

  // The library finds `function` under this name, in whichever DLL it looks.
  template <class Function>
  void replace(const std::string& name, Function function) {
    absent_.erase(name);
    replacements_.erase(name);
    replacements_[name] = makeReplacement(std::move(function));
  }

  // The library does not find this function (error 127).
  void makeAbsent(const std::string& name);

  // The DLL can neither be loaded nor found among those loaded (error 126).
  void makeMissing(const std::wstring& dll);

  // What the library asked for, in order: names of functions, and DLLs exactly as they were spelt.
  [[nodiscard]] const std::vector<std::string>& functionsAsked() const { return functionsAsked_; }
  [[nodiscard]] const std::vector<std::wstring>& librariesLoaded() const { return librariesLoaded_; }

 private:
  [[nodiscard]] bool isMissing(std::wstring_view path) const;
  FARPROC find(HMODULE module, const char* name);

  std::map<std::string, std::unique_ptr<Replacement>> replacements_;
  std::set<std::string> absent_;
  std::set<std::wstring> missing_;
  std::vector<std::string> functionsAsked_;
  std::vector<std::wstring> librariesLoaded_;
};

}  // namespace quillpress::harness
