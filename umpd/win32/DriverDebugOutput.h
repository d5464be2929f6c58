#pragma once

#include <string>

namespace quillpress::driver {

// What goes wrong without concerning the user is written to the debugger output.
void writeDriverDebugOutput(const std::string& text);
void writeDriverDebugOutput(const std::wstring& text);

}  // namespace quillpress::driver
