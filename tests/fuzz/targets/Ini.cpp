// Texts of settings: sections of the ini file, numbers, the map, and the text for the rendering side.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>

#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Target.h"
#include "tests/fuzz/support/WideText.h"
#include "umpd/rules/SettingText.h"
#include "umpd/rules/StringMap.h"

namespace quillpress::fuzz {

namespace {

using driver::StringMap;

// The number that a text begins with, the slow way.
int slowInteger(const std::wstring& text) {
  const std::size_t start = text.starts_with(L'-') ? 1 : 0;
  double magnitude = 0;
  for (std::size_t i = start; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
    magnitude = std::min(magnitude * 10 + (text[i] - L'0'), 1e10);
  }
  return static_cast<int>(std::clamp(start == 1 ? -magnitude : magnitude,
                                     double{std::numeric_limits<int>::min()},
                                     double{std::numeric_limits<int>::max()}));
}

std::wstring folded(std::wstring_view text) {
  std::wstring result(text);
  for (wchar_t& character : result) {
    if (character >= L'A' && character <= L'Z') character = static_cast<wchar_t>(character + 32);
  }
  return result;
}

// The map against one of the standard library.
class Maps {
 public:
  void set(std::wstring_view name, std::wstring_view value) {
    const bool isNew = !expected_.contains(folded(name));
    const bool hasRoom = !isNew || expected_.size() < StringMap::kCapacity;
    FUZZ_CHECK(map_.set(name, value) == hasRoom);
    if (hasRoom) expected_[folded(name)] = value;
  }

  void check() const {
    FUZZ_CHECK(map_.size() == expected_.size());
    for (const auto& [name, value] : expected_) {
      const std::wstring* found = map_.find(name);
      FUZZ_CHECK(found != nullptr && *found == value);
      FUZZ_CHECK(map_.findInteger(name) == slowInteger(value));
    }
    std::size_t length = 0;
    for (const StringMap::Entry& entry : map_) length += entry.key.size() + entry.value.size() + 2;
    FUZZ_CHECK(driver::driverConfigText(map_).size() <= length);
  }

 private:
  StringMap map_;
  std::map<std::wstring, std::wstring> expected_;
};

}  // namespace

void runIni(Input input) {
  std::wstring texts;
  for (const std::uint8_t byte : input) texts += static_cast<wchar_t>(byte == '\n' ? 0 : byte);
  Maps maps;
  const wchar_t* last = texts.data();
  for (const driver::IniLine& line : driver::parseIniSection(texts)) {
    FUZZ_CHECK(!line.name.empty() && !line.value.empty());
    FUZZ_CHECK(line.name.find(L'=') == std::wstring_view::npos &&
               line.value.find(L'\0') == std::wstring_view::npos);
    FUZZ_CHECK(line.name.data() >= last && line.value.data() == line.name.data() + line.name.size() + 1);
    last = line.value.data() + line.value.size();
    FUZZ_CHECK(last <= texts.data() + texts.size());
    const bool isNumber = line.value.find_first_not_of(L"0123456789") == std::wstring_view::npos;
    FUZZ_CHECK(driver::isDecimalNumber(line.value) == isNumber);
    maps.set(line.name, line.value);
  }
  maps.check();
}

}  // namespace quillpress::fuzz
