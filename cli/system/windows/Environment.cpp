#include "cli/system/Environment.h"

#include <algorithm>
#include <cstdlib>

#include "cli/system/windows/Windows.h"

namespace quillpress::cli {

// The C runtime keeps an environment of its own, and hands changes on to the system.
void setVariable(const char* name, const std::optional<std::string>& value) {
  // Nothing behind the sign removes the variable.
  _putenv((std::string(name) + "=" + value.value_or("")).c_str());
}

std::tm universalTime(std::int64_t seconds) {
  std::tm parts{};
  const __time64_t time{seconds};
  if (_gmtime64_s(&parts, &time) != 0) return {};
  return parts;
}

unsigned processorCount() {
  SYSTEM_INFO information{};
  GetSystemInfo(&information);
  return std::max<unsigned>(1, information.dwNumberOfProcessors);
}

}  // namespace quillpress::cli
