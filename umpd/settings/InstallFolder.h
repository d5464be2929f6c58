#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillpress::driver {

// Where the driver and its programs are installed, with a final backslash; nothing when the spooler does not
// tell. The answer is kept for the life of the process.
std::optional<std::wstring> installFolder();

// The path of a file there; nothing when it has 260 characters or more.
std::optional<std::wstring> installedFile(std::wstring_view name);

}  // namespace quillpress::driver
