#include "umpd/output/PathRules.h"

namespace quillpress {
namespace {

constexpr std::wstring_view kSeparators = L"\\/";

struct PathParts {
  std::wstring_view drive;   // "C:"
  std::wstring_view folder;  // with both separators around it
  std::wstring_view name;
  std::wstring_view extension;  // with its dot
};

PathParts split(std::wstring_view path) {
  PathParts parts;
  if (path.size() >= 2 && path[1] == L':') parts.drive = path.substr(0, 2);
  path.remove_prefix(parts.drive.size());
  const std::size_t separator = path.find_last_of(kSeparators);
  parts.folder = path.substr(0, separator + 1);  // none: npos + 1 is 0
  path.remove_prefix(parts.folder.size());
  parts.name = path.substr(0, path.rfind(L'.'));
  parts.extension = path.substr(parts.name.size());
  return parts;
}

}  // namespace

std::wstring withinPathLimit(std::wstring_view path) {
  if (path.size() <= kLongestPath) return std::wstring(path);
  PathParts parts = split(path);
  if (parts.drive.size() + parts.folder.size() + parts.extension.size() >= kLongestPath - 2)
    parts.folder = L"\\";
  std::wstring result = std::wstring(parts.drive).append(parts.folder);
  const std::size_t room = kLongestPath - 1 - result.size();
  const std::wstring_view extension = parts.extension.substr(0, room);
  return result.append(parts.name.substr(0, room - extension.size())).append(extension);
}

std::wstring_view folderOf(std::wstring_view path) {
  const std::size_t separator = path.find_last_of(kSeparators);
  return separator == std::wstring_view::npos ? std::wstring_view() : path.substr(0, separator);
}

std::vector<std::wstring> folderChain(std::wstring_view folder) {
  std::vector<std::wstring> chain;
  for (std::size_t end = 0; end < folder.size();) {
    end = folder.find_first_of(kSeparators, end + 1);
    if (end == std::wstring_view::npos) end = folder.size();
    chain.emplace_back(folder.substr(0, end));
  }
  return chain;
}

}  // namespace quillpress
