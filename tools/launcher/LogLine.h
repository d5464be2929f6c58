#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace quillpress::launcher {

// One line of the log, without its end: fields separated by tabs. Control characters in a field are replaced
// by their pictures (U+2400 and on), so that no name can pass for a field or a line of its own.
std::wstring logLine(std::initializer_list<std::wstring_view> fields);

}  // namespace quillpress::launcher
