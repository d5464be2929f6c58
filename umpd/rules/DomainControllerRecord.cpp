#include "umpd/rules/DomainControllerRecord.h"

#include <algorithm>

#include "umpd/rules/Text.h"

namespace quillpress::driver {

void storeName(DomainControllerRecord& record, std::wstring_view name) {
  const std::wstring_view part = fitting(name, record.name.size());
  // All of it, so that no longer name of before shows behind the new one's end.
  record.name.fill(u'\0');
  std::transform(part.begin(), part.end(), record.name.begin(),
                 [](wchar_t character) { return static_cast<char16_t>(character); });
}

std::optional<std::wstring> readName(const DomainControllerRecord& record) {
  const auto end = std::find(record.name.begin(), record.name.end(), u'\0');
  // Any process of the session may write here, so the end is looked for and not assumed.
  if (end == record.name.end()) return std::nullopt;
  return std::wstring(record.name.begin(), end);
}

}  // namespace quillpress::driver
