#include "umpd/output/CleanedName.h"

#include <algorithm>

#include "umpd/output/NameCharacters.h"

namespace quillpress {
namespace {

// "Microsoft Word - Report.doc" is about "Report.doc".
std::wstring_view withoutApplication(std::wstring_view name, wchar_t trimCharacter) {
  const std::size_t trim = name.find(trimCharacter);
  if (trim == std::wstring_view::npos) return name;
  name.remove_prefix(trim + 1);
  name.remove_prefix(std::min(name.find_first_not_of(L' '), name.size()));
  return name;
}

// Only an ending of at most three characters is one of a file. Kept: a dot in front is none of an extension.
std::wstring_view withoutShortExtension(std::wstring_view name) {
  const std::size_t dot = name.rfind(L'.');
  if (dot == std::wstring_view::npos || dot == 0 || name.size() - dot - 1 > 3) return name;
  return name.substr(0, dot);
}

}  // namespace

std::wstring cleanedName(std::wstring_view name, wchar_t trimCharacter, std::wstring_view extension,
                         std::size_t room) {
  name = withoutApplication(name, trimCharacter);
  const std::size_t needed = extension.size() + 1;
  name = name.substr(0, room > needed ? room - needed : 0);
  std::wstring cleaned(withoutShortExtension(name));
  std::replace_if(
      cleaned.begin(), cleaned.end(), [](wchar_t each) { return !isAllowedNameCharacter(each); }, L'_');
  return cleaned.append(extension);
}

}  // namespace quillpress
