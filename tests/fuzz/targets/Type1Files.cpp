// Type 1 font files. What follows the first "eexec" is encrypted here, so that the fuzzer need not.

#include "postscript/level3/fonts/Type1File.h"
#include "tests/fuzz/support/FontChecks.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

namespace {

std::string encrypted(std::string_view plain) {
  std::uint32_t key = 55665;
  std::string result;
  for (const char character : plain) {
    const std::uint32_t cipher = (static_cast<std::uint8_t>(character) ^ key >> 8) & 0xFF;
    result += static_cast<char>(cipher);
    key = ((cipher + key) * 52845 + 22719) & 0xFFFF;
  }
  return result;
}

}  // namespace

void runType1Files(Input input) {
  std::string bytes(input.begin(), input.end());
  if (const std::size_t clear = bytes.find("eexec"); clear != std::string::npos) {
    bytes = bytes.substr(0, clear + 6) +
            encrypted("\x90\x90\x90\x90" + bytes.substr(std::min(clear + 6, bytes.size())));
  }
  try {
    level3::Type1File file = level3::readType1File(bytes);
    file.data.privateData.lenIV = -1;
    level3::Type1Font font(std::move(file.data));
    for (const auto& [name, charstring] : file.charstrings) font.add(name, charstring);
    checkFont(font, Units::kSame);
  } catch (const level3::FontError&) {
    // As it shall be.
  }
}

}  // namespace quillpress::fuzz
