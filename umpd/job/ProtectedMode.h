#pragma once

#include <string>
#include <string_view>

namespace quillpress {

// Whether this is a browser process in protected mode, which may write to few folders.
bool isProtectedModeProcess();

// Where such a process can write what was meant for `path`: the browser's own copy of the user's folders.
// Empty when the user has no such folder.
std::wstring virtualizedPath(std::wstring_view path);

// The rule behind it, for the user's application-data folder.
std::wstring virtualizedPath(std::wstring_view path, std::wstring_view applicationData);

}  // namespace quillpress
