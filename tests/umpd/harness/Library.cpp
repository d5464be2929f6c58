#include "tests/umpd/harness/Library.h"

#include <cstdio>
#include <cstdlib>

namespace quillpress::harness {

Library::Library(const wchar_t* fileName) : module_(LoadLibraryW(fileName)) {
  if (module_ == nullptr) {
    // No test of this program can say anything without it.
    std::fprintf(stderr, "%ls cannot be loaded: error %lu\n", fileName, GetLastError());
    std::fflush(nullptr);
    std::_Exit(2);
  }
  imports_.emplace(module_);
}

Library::~Library() {
  restoreAll();
  FreeLibrary(module_);
}

void Library::restore(const std::string& name) {
  const auto found = replacements_.find(name);
  if (found == replacements_.end()) return;
  imports_->restore(name);
  replacements_.erase(found);
}

void Library::restoreAll() {
  while (!replacements_.empty()) restore(std::string(replacements_.begin()->first));
}

bool Library::requireImport(const std::string& name) const {
  if (imports(name)) return true;
  ADD_FAILURE() << "quillpress.dll does not import " << name;
  return false;
}

void* Library::address(const char* name) const {
  void* found = reinterpret_cast<void*>(GetProcAddress(module_, name));
  if (found == nullptr) ADD_FAILURE() << "quillpress.dll does not export " << name;
  return found;
}

}  // namespace quillpress::harness
