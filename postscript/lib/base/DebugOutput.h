#pragma once

#include <string>

namespace quillpress {

// Hands a text to the platform's debugger output, where there is one, or to standard error when the
// environment variable QUILLPRESS_MESSAGES is "stderr": a library must not write to its host's terminal
// unasked.
void writeDebugOutput(const std::string& text);

}  // namespace quillpress
