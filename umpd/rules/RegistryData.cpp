#include "umpd/rules/RegistryData.h"

#include <cstring>

namespace quillpress::driver {

std::wstring textOfRegistryBytes(std::span<const std::uint8_t> bytes) {
  std::wstring text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto character = static_cast<wchar_t>(bytes[i] | bytes[i + 1] << 8U);
    if (character == L'\0') break;
    text += character;
  }
  return text;
}

std::optional<int> numberOfRegistryBytes(std::span<const std::uint8_t> bytes) {
  int number = 0;
  if (bytes.size() != sizeof number) return std::nullopt;
  std::memcpy(&number, bytes.data(), sizeof number);
  return number;
}

std::optional<std::wstring> settingOfRegistryValue(std::uint32_t kind, std::span<const std::uint8_t> bytes) {
  if (kind == kRegistryText) return textOfRegistryBytes(bytes);
  if (kind != kRegistryNumber) return std::nullopt;
  const std::optional<int> number = numberOfRegistryBytes(bytes);
  return number ? std::optional(std::to_wstring(*number)) : std::nullopt;
}

}  // namespace quillpress::driver
