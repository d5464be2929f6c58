#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillpress::launcher {

// Windows gives a program one text, its command line. How that falls into arguments is an agreement between
// programs, and the C runtime's rules are the ones that nearly all keep.

// The first argument is the program; in it a backslash is never special.
std::vector<std::wstring> splitCommandLine(std::wstring_view line);

// A command line that splits into exactly these arguments, whatever characters they hold. The program is
// always quoted, so that blanks in its path cannot start another one.
// REQUIRES: the first argument holds no quote
std::wstring joinCommandLine(const std::vector<std::wstring>& arguments);

}  // namespace quillpress::launcher
