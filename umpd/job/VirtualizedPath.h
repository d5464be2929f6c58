#pragma once

#include <string>
#include <string_view>

namespace quillpress {

// Where a browser process in protected mode can write what was meant for `path`: the browser's own copy of
// the user's folders below the application data. Empty when the user has no such folder.
std::wstring virtualizedPath(std::wstring_view path, std::wstring_view applicationData);

}  // namespace quillpress
