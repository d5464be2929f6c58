#include "umpd/metadata/XmpDate.h"

#include <array>
#include <cstdlib>
#include <cwchar>

namespace quillpress {
namespace {

std::wstring twoDigits(long number) {
  return (number < 10 ? L"0" : L"") + std::to_wstring(number);
}

std::wstring offset(long biasMinutes) {
  if (biasMinutes == 0) return L"Z";
  const std::ldiv_t parts = std::ldiv(std::labs(biasMinutes), 60);
  return (biasMinutes > 0 ? L"-" : L"+") + twoDigits(parts.quot) + L":" + twoDigits(parts.rem);
}

}  // namespace

std::wstring formatXmpDate(const std::tm& localTime, long biasMinutes) {
  std::array<wchar_t, 48> text{};
  if (std::wcsftime(text.data(), text.size(), L"%Y-%m-%dT%H:%M:%S", &localTime) == 0) return {};
  return text.data() + offset(biasMinutes);
}

}  // namespace quillpress
