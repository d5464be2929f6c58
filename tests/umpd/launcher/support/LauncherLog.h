#pragma once

#include <string>
#include <vector>

namespace quillpress::harness {

// The lines of a launcher's log, each split into its fields.
std::vector<std::vector<std::wstring>> readLauncherLog(const std::wstring& path);

}  // namespace quillpress::harness
