#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quillpress {

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
  std::function<bool(const std::wstring& path)> exists;  // whether something has this path
  std::function<int()> random;                           // a non-negative number
};

// Chooses the path of a document's output file by the rules: less than `bufferSize` characters, and at most
// 260 of them. Something may exist at the path.
std::wstring chooseOutputPath(const NamingRules& rules, std::wstring_view documentName,
                              std::size_t bufferSize, const NamingWorld& world);

// The path itself when nothing exists there; else with ".NUMBER.pdf" for its ending. Nothing when the path
// has no ending, or when no number helps.
std::optional<std::wstring> uniquePath(std::wstring path, std::size_t bufferSize, const NamingWorld& world);

}  // namespace quillpress
