#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "tests/umpd/harness/ImportTable.h"
#include "tests/umpd/harness/Replacement.h"

namespace quillpress::harness {

// The delivered quillpress.dll, loaded for one test and unloaded after it, so that nothing that it keeps
// for the life of a process goes on from one test to the next.
//
// Its surroundings are changed by replacing the functions that it imports. A replacement is a lambda (or a
// plain function) with the exact parameters of the function; it may call the real one. It holds until the
// library goes or another replacement of the same name comes. What the library calls while it is being
// loaded cannot be replaced.
class Library {
 public:
  explicit Library(const wchar_t* fileName = L"quillpress.dll");
  ~Library();
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  [[nodiscard]] HMODULE module() const { return module_; }
  [[nodiscard]] bool imports(const std::string& name) const { return imports_->contains(name); }

  // The test fails when the library does not import the function: nothing would ever call `function`.
  template <class Function>
  void replace(const std::string& name, Function function) {
    if (requireImport(name)) install(name, [&] { return makeReplacement(std::move(function)); });
  }

  // For functions that the library may or may not use to do its work.
  template <class Function>
  void replaceIfImported(const std::string& name, Function function) {
    if (imports(name)) install(name, [&] { return makeReplacement(std::move(function)); });
  }

  void restore(const std::string& name);
  void restoreAll();

  // An export; the test fails when there is none of this name.
  template <class Function>
  Function* find(const char* name) const {
    return reinterpret_cast<Function*>(address(name));
  }

 private:
  // A former replacement of the name must be gone before the new one is made: both may be of one type.
  template <class Make>
  void install(const std::string& name, Make make) {
    restore(name);
    auto replacement = make();
    imports_->redirect(name, replacement->address());
    replacements_[name] = std::move(replacement);
  }

  [[nodiscard]] bool requireImport(const std::string& name) const;
  void* address(const char* name) const;

  HMODULE module_;
  std::optional<ImportTable> imports_;
  std::map<std::string, std::unique_ptr<Replacement>> replacements_;
};

}  // namespace quillpress::harness
