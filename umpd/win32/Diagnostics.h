#pragma once

#include <string>
#include <string_view>

namespace quillpress::driver {
// Message boxes without an owner, in the style of service notifications: they appear even from the
// spooler's process. Both wait for the user.

// Caption "Error", text in the manner of printf, in the ANSI code page.
[[gnu::format(printf, 1, 2)]] void showErrorBox(const char* format, ...);

// The caller's message is the caption; the system explains the thread's last error below it, then the
// extra text, when there is one, after an empty line. REQUIRES: nothing has changed the last error since the
// failure.
void showSystemErrorBox(std::wstring_view caption, std::wstring_view extraText = {});

// What goes wrong without concerning the user is written to the debugger output.
void writeDriverDebugOutput(const std::string& text);
void writeDriverDebugOutput(const std::wstring& text);
}  // namespace quillpress::driver
