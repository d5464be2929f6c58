#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillpress {

// Kept: a path of exactly this length is left alone, though Windows opens 259 characters at most.
inline constexpr std::size_t kLongestPath = 260;

// A longer path with its name cut so that the whole has less than 260 characters, extension included. Folders
// that leave no room for a name are dropped. A path that is not longer stays as it is.
std::wstring withinPathLimit(std::wstring_view path);

// The path of the folder that a path lies in: the text before its last separator; empty when it has none.
std::wstring_view folderOf(std::wstring_view path);

// Folders that must exist for a file in `folder`, outermost first.
// "C:\a\b" gives "C:", "C:\a" and "C:\a\b".
std::vector<std::wstring> folderChain(std::wstring_view folder);

}  // namespace quillpress
