#pragma once

#include <string>

namespace quillpress::cli {

// The manual page quillpress(1), for man.
std::string manualPage();

}  // namespace quillpress::cli
