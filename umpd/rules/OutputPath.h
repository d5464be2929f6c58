#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillpress::driver {
// Kept: a path of exactly this length is left alone, though Windows opens 259 characters at most
// (PathRulesTest.APathOf260CharactersStays).
inline constexpr std::size_t kLongestPath = 260;

// A longer path with its name cut so that the whole has less than 260 characters, extension included. Folders
// that leave no room for a name are dropped. A path that is not longer stays as it is.
std::wstring withinPathLimit(std::wstring_view path);

// The path of the folder that a path lies in: the text before its last separator; empty when it has none.
std::wstring_view folderOf(std::wstring_view path);

// Folders that must exist for a file in `folder`, outermost first.
// "C:\a\b" gives "C:", "C:\a" and "C:\a\b".
std::vector<std::wstring> folderChain(std::wstring_view folder);

// What a printer's settings say of the names of output files.
struct NamingRules {
  int action = 0;                    // the saved-name policy
  wchar_t trimCharacter = L'-';      // ends the application's part of a document name
  std::wstring defaultName;          // at most 519 characters
  std::wstring extension = L".pdf";  // at most 39 characters
  std::wstring folder;               // at most 519 characters; empty: none
};

// What the choice of a name needs to know of the world.
struct NamingWorld {
  std::function<bool(const std::wstring& path)> exists;    // whether something has this path
  std::function<bool(const std::wstring& path)> isFolder;  // whether that is a folder
  std::function<int()> random;                             // a non-negative number
};

// Chooses the path of a document's output file by the rules: less than `bufferSize` characters, and at most
// 260 of them. Something may exist at the path.
std::wstring chooseOutputPath(const NamingRules& rules, std::wstring_view documentName,
                              std::size_t bufferSize, const NamingWorld& world);

// The path itself when nothing exists there; else with ".NUMBER.pdf" for its ending. Nothing when the path
// has no ending, or when a thousand numbers do not help. A folder at a path that was not meant to be a file's
// name is left to the creation of the file, which fails.
std::optional<std::wstring> uniquePath(const NamingRules& rules, std::wstring path, std::size_t bufferSize,
                                       const NamingWorld& world);

// Where a browser process in protected mode can write what was meant for `path`: the browser's own copy of
// the user's folders below the application data. Empty when the user has no such folder.
std::wstring virtualizedPath(std::wstring_view path, std::wstring_view applicationData);
}  // namespace quillpress::driver
