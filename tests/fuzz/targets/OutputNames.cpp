// Names of output files: whatever a document is called and whatever the settings say, a path fits its buffer
// and has allowed characters only.

#include <algorithm>
#include <optional>

#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Target.h"
#include "tests/fuzz/support/WideText.h"
#include "umpd/rules/DocumentName.h"
#include "umpd/rules/OutputPath.h"

namespace quillpress::fuzz {

namespace {

using driver::NamingRules;
using driver::NamingWorld;

constexpr std::size_t kBufferSizes[] = {1, 2, 3, 9, 40, 259, 260, 261, 262, 520, 1000};

NamingRules rulesOf(Choices& choices) {
  NamingRules rules;
  rules.action = choices.number<std::int8_t>() % 8;
  rules.trimCharacter = choices.flag() ? L'-' : static_cast<wchar_t>(choices.byte());
  rules.defaultName = wideText(choices, choices.flag() ? 20 : 519);
  if (choices.flag()) rules.extension = wideText(choices, 39);
  if (choices.flag()) rules.folder = L"C:\\" + wideText(choices, choices.flag() ? 20 : 516);
  return rules;
}

// Files and folders exist as chance will have it, and the last answers are remembered.
struct World {
  Choices& choices;
  std::wstring asked;
  bool existed = false;
  bool wasFolder = false;

  NamingWorld asWorld() {
    return {[this](const std::wstring& path) {
              asked = path;
              existed = choices.flag();
              wasFolder = false;
              return existed;
            },
            [this](const std::wstring& path) {
              FUZZ_CHECK(path == asked && existed);
              wasFolder = choices.flag();
              return wasFolder;
            },
            [this] { return static_cast<int>(choices.number<std::uint32_t>() >> 1U); }};
  }
};

void checkName(const std::wstring& name, std::size_t room, const std::wstring& extension) {
  FUZZ_CHECK(name.size() < std::max(room, extension.size() + 1));
  FUZZ_CHECK(name.ends_with(extension));
  FUZZ_CHECK(std::all_of(name.begin(), name.end() - static_cast<std::ptrdiff_t>(extension.size()),
                         driver::isAllowedNameCharacter));
}

void checkFolders(const std::wstring& path) {
  const std::wstring_view folder = driver::folderOf(path);
  FUZZ_CHECK(path.starts_with(folder));
  std::size_t length = 0;
  for (const std::wstring& each : driver::folderChain(folder)) {
    FUZZ_CHECK(each.size() > length && folder.starts_with(each));
    length = each.size();
  }
  FUZZ_CHECK(length == folder.size());
}

void checkLimit(const std::wstring& path) {
  const std::wstring within = driver::withinPathLimit(path);
  FUZZ_CHECK(within.size() <= driver::kLongestPath && driver::withinPathLimit(within) == within);
  FUZZ_CHECK(path.size() > driver::kLongestPath || within == path);
}

}  // namespace

void runOutputNames(Input input) {
  Choices choices(input);
  const NamingRules rules = rulesOf(choices);
  const std::wstring document = wideText(choices, 700);
  const std::size_t bufferSize = choices.oneOf(kBufferSizes);
  World world{choices, {}, false, false};

  FUZZ_CHECK(driver::decodeDocumentName(document).size() <= document.size());
  const std::size_t room = choices.below(600);
  checkName(driver::cleanedName(document, rules.trimCharacter, rules.extension, room), room, rules.extension);

  const std::wstring path = driver::chooseOutputPath(rules, document, bufferSize, world.asWorld());
  FUZZ_CHECK(path.size() < bufferSize && path.size() <= driver::kLongestPath);
  checkFolders(path);
  const std::optional<std::wstring> unique = driver::uniquePath(rules, path, bufferSize, world.asWorld());
  if (unique)
    FUZZ_CHECK(unique->size() < bufferSize && *unique == world.asked && (!world.existed || world.wasFolder));

  checkLimit(rules.folder + L'\\' + document);
  driver::virtualizedPath(document, rules.folder);
}

}  // namespace quillpress::fuzz
