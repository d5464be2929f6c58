#include "cli/system/Paths.h"

#include <unistd.h>

#include <cstdlib>

namespace quillpress::cli {

std::filesystem::path pathOf(const std::string& name) {
  return name;
}

std::string utf8Of(const std::filesystem::path& path) {
  return path.string();
}

std::string comparableName(const std::filesystem::path& path) {
  return path.string();
}

std::string whereLinksLead(const std::string& path) {
  std::error_code error;
  const auto target = std::filesystem::canonical(path, error);
  return error ? path : target.string();
}

std::vector<std::string> programArguments(int argc, const char* const* argv) {
  return {argv, argv + argc};
}

std::vector<std::string> expanded(const std::string& argument) {
  return {argument};
}

std::string temporaryFolder() {
  const char* const folder = std::getenv("TMPDIR");
  // The variable often outlives the folder that it names, as one of a session that has ended.
  const bool isUsable = folder != nullptr && access(folder, W_OK | X_OK) == 0;
  return isUsable ? folder : "/tmp";
}

}  // namespace quillpress::cli
