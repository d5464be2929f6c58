#include "umpd/rules/DriverConfigText.h"

#include <algorithm>

namespace quillpress::driver {
namespace {

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

std::wstring driverConfigText(const StringMap& settings) {
  std::wstring text;
  for (const StringMap::Entry& entry : settings) {
    if (!isWanted(entry.key) || entry.value.empty()) continue;
    text.append(entry.key).append(L"=").append(entry.value).append(L"&");
  }
  return text;
}

}  // namespace quillpress::driver
