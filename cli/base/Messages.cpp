#include "cli/base/Messages.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace quillpress::cli {

void say(std::string_view text) {
  const std::string line = "quillpress: " + std::string(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

std::string systemReason() {
  return std::strerror(errno);
}

std::string counted(unsigned long long number, std::string_view singular) {
  return std::to_string(number) + " " + std::string(singular) + (number == 1 ? "" : "s");
}

}  // namespace quillpress::cli
