#pragma once

#include <string>

namespace quillpress {

// The folder of the system's own libraries, without a final backslash; empty when it cannot be had.
std::wstring systemFolder();

}  // namespace quillpress
