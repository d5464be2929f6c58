#include "umpd/rules/Account.h"

#include <algorithm>
#include <cwchar>

#include "umpd/rules/Text.h"

namespace quillpress::driver {
namespace {
constexpr unsigned long kRevision = 1;

std::wstring authorityText(const std::array<std::uint8_t, 6>& authority) {
  std::array<wchar_t, 16> text{};
  // Authorities beyond 32 bits are written in hexadecimal by convention; those in use are small and decimal.
  if (authority[0] != 0 || authority[1] != 0) {
    std::swprintf(text.data(), text.size(), L"0x%02hx%02hx%02hx%02hx%02hx%02hx", authority[0], authority[1],
                  authority[2], authority[3], authority[4], authority[5]);
    return text.data();
  }
  std::uint32_t number = 0;
  for (std::size_t i = 2; i < authority.size(); ++i) number = (number << 8) | authority[i];
  return std::to_wstring(number);
}
}  // namespace

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

std::size_t sidTextSize(const SecurityIdentifier& sid) {
  // More than is ever needed: a number of 32 bits takes eleven characters with its dash.
  return 56 + 24 * sid.subAuthorities.size();
}

std::optional<std::wstring> sidText(const SecurityIdentifier& sid, std::size_t size) {
  if (size < sidTextSize(sid)) return std::nullopt;
  std::wstring text = L"S-" + std::to_wstring(kRevision) + L"-" + authorityText(sid.authority);
  for (const std::uint32_t subAuthority : sid.subAuthorities) text += L"-" + std::to_wstring(subAuthority);
  return text;
}
}  // namespace quillpress::driver
