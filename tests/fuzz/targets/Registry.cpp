// Values of the registry, which any program may have written: half characters, no final zero, other kinds.

#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Target.h"
#include "tests/fuzz/support/WideText.h"
#include "umpd/rules/SettingText.h"

namespace quillpress::fuzz {

void runRegistry(Input input) {
  if (input.empty()) return;
  const std::uint32_t kind = input.front();
  const Input bytes = input.subspan(1);

  std::wstring expected;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const unsigned unit = bytes[i] + bytes[i + 1] * 256U;
    if (unit == 0) break;
    expected += static_cast<wchar_t>(unit);
  }
  FUZZ_CHECK(driver::textOfRegistryBytes(bytes) == expected);

  const std::optional<int> number = driver::numberOfRegistryBytes(bytes);
  FUZZ_CHECK(number.has_value() == (bytes.size() == 4));

  const std::optional<std::wstring> setting = driver::settingOfRegistryValue(kind, bytes);
  if (kind == driver::kRegistryText) {
    FUZZ_CHECK(setting == expected);
  } else if (kind == driver::kRegistryNumber && number) {
    FUZZ_CHECK(setting == std::to_wstring(*number));
  } else {
    FUZZ_CHECK(!setting);
  }
}

}  // namespace quillpress::fuzz
