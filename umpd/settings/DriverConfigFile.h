#pragma once

#include "umpd/settings/StringMap.h"

namespace quillpress {

// Writes driverConfigText into a file of the system folder, as UTF-16 without mark and final zero. False,
// with the last error, when the file cannot be made or written.
[[nodiscard]] bool writeDriverConfigFile(const StringMap& settings);

}  // namespace quillpress
