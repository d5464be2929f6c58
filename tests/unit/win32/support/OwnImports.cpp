#include "tests/unit/win32/support/OwnImports.h"

namespace quillpress::classes {

OwnImports::~OwnImports() {
  while (!replacements_.empty()) restore(std::string(replacements_.begin()->first));
}

void OwnImports::restore(const std::string& name) {
  const auto found = replacements_.find(name);
  if (found == replacements_.end()) return;
  table_.restore(name);
  replacements_.erase(found);
}

bool OwnImports::isImported(const std::string& name) const {
  if (table_.contains(name)) return true;
  ADD_FAILURE() << "this program does not import " << name;
  return false;
}

}  // namespace quillpress::classes
