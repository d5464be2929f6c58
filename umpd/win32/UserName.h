#pragma once

#include <string>

namespace quillpress {

// The calling user's name, at most 259 characters; empty when the system does not tell.
std::wstring userName();

}  // namespace quillpress
