#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <string>

#include "tests/umpd/harness/ImportTable.h"
#include "tests/umpd/harness/Replacement.h"

namespace quillpress::classes {

// The functions that this program imports. The classes are linked into it, so what is replaced here is
// replaced for them, and for the test too: a replacement reaches the real function through `real` only.
class OwnImports {
 public:
  OwnImports() : table_(GetModuleHandleW(nullptr)) {}
  ~OwnImports();
  OwnImports(const OwnImports&) = delete;
  OwnImports& operator=(const OwnImports&) = delete;

  // `function`: a lambda with the exact parameters. Holds until `restore` or the end of this object. The test
  // fails when nothing imports the function.
  template <class Function>
  void replace(const std::string& name, Function function) {
    if (!isImported(name)) return;
    restore(name);
    auto replacement = harness::makeReplacement(std::move(function));
    table_.redirect(name, replacement->address());
    replacements_[name] = std::move(replacement);
  }

  void restore(const std::string& name);

 private:
  [[nodiscard]] bool isImported(const std::string& name) const;

  harness::ImportTable table_;
  std::map<std::string, std::unique_ptr<harness::Replacement>> replacements_;
};

// Windows' own function, whatever stands in for it.
template <class Function>
Function* real(const wchar_t* library, const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}

}  // namespace quillpress::classes
