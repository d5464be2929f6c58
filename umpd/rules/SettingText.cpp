#include "umpd/rules/SettingText.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace quillpress::driver {
namespace {
bool isDigit(wchar_t character) {
  return character >= L'0' && character <= L'9';
}

constexpr std::wstring_view kWanted[] = {
    L"resolution",       L"PrinterData4",      L"pdfTemplate", L"pdfTemplateOnTop",  L"imageDPI",
    L"jpegImageQuality", L"watermarkFontName", L"watermark",   L"watermarkFontSize",
};

// Kept: the case counts here, unlike in the map, so a setting stored as "printerdata4" is not passed on
// (DriverConfigTextTest.TheCaseOfNamesCounts).
bool isWanted(std::wstring_view key) {
  return std::find(std::begin(kWanted), std::end(kWanted), key) != std::end(kWanted);
}
}  // namespace

int toInteger(std::wstring_view text) {
  // One beyond the greatest is as far as the sum may grow: it is the magnitude of the smallest.
  constexpr std::int64_t kMost = std::numeric_limits<int>::max();
  const bool negative = text.starts_with(L'-');
  if (negative) text.remove_prefix(1);
  std::int64_t magnitude = 0;
  for (const wchar_t character : text) {
    if (!isDigit(character)) break;
    magnitude = std::min(magnitude * 10 + (character - L'0'), kMost + 1);
  }
  return static_cast<int>(negative ? -magnitude : std::min(magnitude, kMost));
}

bool isDecimalNumber(std::wstring_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

std::vector<IniLine> parseIniSection(std::wstring_view texts) {
  std::vector<IniLine> lines;
  while (!texts.empty()) {
    const std::wstring_view line = texts.substr(0, texts.find(L'\0'));
    texts.remove_prefix(line.size() < texts.size() ? line.size() + 1 : line.size());
    const std::size_t equals = line.find(L'=');
    // A name without a value would hide a setting's default behind an empty text.
    if (equals == std::wstring_view::npos || equals == 0 || equals + 1 == line.size()) continue;
    lines.push_back({line.substr(0, equals), line.substr(equals + 1)});
  }
  return lines;
}

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

std::wstring driverConfigText(const StringMap& settings) {
  std::wstring text;
  for (const StringMap::Entry& entry : settings) {
    if (!isWanted(entry.key) || entry.value.empty()) continue;
    text.append(entry.key).append(L"=").append(entry.value).append(L"&");
  }
  return text;
}
}  // namespace quillpress::driver
