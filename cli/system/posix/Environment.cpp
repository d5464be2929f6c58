#include "cli/system/Environment.h"

#include <algorithm>
#include <cstdlib>
#include <thread>

namespace quillpress::cli {

void setVariable(const char* name, const std::optional<std::string>& value) {
  if (value) {
    setenv(name, value->c_str(), 1);
  } else {
    unsetenv(name);
  }
}

std::tm universalTime(std::int64_t seconds) {
  const std::time_t time{seconds};
  std::tm parts{};
  gmtime_r(&time, &parts);
  return parts;
}

unsigned processorCount() {
  return std::max(1U, std::thread::hardware_concurrency());
}

}  // namespace quillpress::cli
