#include "umpd/rules/SidText.h"

#include <cwchar>

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
