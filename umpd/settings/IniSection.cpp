#include "umpd/settings/IniSection.h"

namespace quillpress {

std::vector<IniLine> parseIniSection(std::wstring_view texts) {
  std::vector<IniLine> lines;
  while (!texts.empty()) {
    const std::wstring_view line = texts.substr(0, texts.find(L'\0'));
    texts.remove_prefix(line.size() < texts.size() ? line.size() + 1 : line.size());
    const std::size_t equals = line.find(L'=');
    if (equals == std::wstring_view::npos || equals == 0 || equals + 1 == line.size()) continue;
    lines.push_back({line.substr(0, equals), line.substr(equals + 1)});
  }
  return lines;
}

}  // namespace quillpress
