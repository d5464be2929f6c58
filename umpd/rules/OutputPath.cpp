#include "umpd/rules/OutputPath.h"

#include "umpd/rules/DocumentName.h"
#include "umpd/rules/Text.h"
#include "umpd/rules/Trace.h"

namespace quillpress::driver {
namespace {
constexpr std::wstring_view kSeparators = L"\\/";

struct PathParts {
  std::wstring_view drive;   // "C:"
  std::wstring_view folder;  // with both separators around it
  std::wstring_view name;
  std::wstring_view extension;  // with its dot
};

PathParts split(std::wstring_view path) {
  PathParts parts;
  if (path.size() >= 2 && path[1] == L':') parts.drive = path.substr(0, 2);
  path.remove_prefix(parts.drive.size());
  const std::size_t separator = path.find_last_of(kSeparators);
  parts.folder = path.substr(0, separator + 1);  // none: npos + 1 is 0
  path.remove_prefix(parts.folder.size());
  parts.name = path.substr(0, path.rfind(L'.'));
  parts.extension = path.substr(parts.name.size());
  return parts;
}

// The values of "SaveFilenameAction" that the choice tells apart.
enum class NameSource { kDocument, kDefaultName, kRandom, kNone };

NameSource nameSource(int action) {
  switch (action) {
    case 0:
    case 2:
    case 3:
    case 5:
      return NameSource::kDocument;
    case 1:
      return NameSource::kDefaultName;
    case 4:
      return NameSource::kRandom;
    default:
      return NameSource::kNone;
  }
}

// The folder with a separator at its end; empty when there is none or when it does not fit.
std::wstring folderPart(const std::wstring& folder, std::size_t available) {
  // A folder that leaves no room for a name is worth less than a name in the current folder.
  if (folder.empty() || folder.size() + 1 >= available) return {};
  const bool isEnded = folder.ends_with(L'\\') || folder.ends_with(L'/');
  return isEnded ? folder : folder + L'\\';
}

std::wstring randomPath(const std::wstring& folder, const NamingRules& rules, const NamingWorld& world) {
  // Enough among two thousand million numbers. The eleventh is taken even if it exists: the path is made
  // unique later.
  constexpr int kAttempts = 11;
  std::wstring path;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const std::wstring number = std::to_wstring(world.random());
    QUILLPRESS_TRACE(L"randstring [%s]\n", number);
    path = folder + number + rules.extension;
    if (!world.exists(path)) break;
  }
  return path;
}

std::wstring rawPath(const NamingRules& rules, std::wstring_view documentName, std::size_t bufferSize,
                     const NamingWorld& world) {
  const NameSource source = nameSource(rules.action);
  if (source == NameSource::kDefaultName) {
    // The name is taken whole, so the folder gets what it leaves.
    const std::size_t taken = rules.defaultName.size();
    return folderPart(rules.folder, bufferSize > taken ? bufferSize - taken : 0) + rules.defaultName;
  }
  std::wstring folder = folderPart(rules.folder, bufferSize);
  if (source == NameSource::kNone) return folder;
  if (source == NameSource::kDocument) {
    const std::wstring_view name = documentName.empty() ? std::wstring_view(rules.defaultName) : documentName;
    if (!name.empty()) {
      return folder + cleanedName(name, rules.trimCharacter, rules.extension, bufferSize - folder.size());
    }
  }
  return randomPath(folder, rules, world);
}

// Whether another path is needed. A folder is in the way of a name, but where only the folder was chosen
// there is no name to change.
bool isTaken(const NamingRules& rules, const std::wstring& path, const NamingWorld& world) {
  if (!world.exists(path)) return false;
  const bool namesFolder =
      path.ends_with(L'\\') || path.ends_with(L'/') || nameSource(rules.action) == NameSource::kNone;
  return !namesFolder || !world.isFolder(path);
}
}  // namespace

std::wstring withinPathLimit(std::wstring_view path) {
  if (path.size() <= kLongestPath) return std::wstring(path);
  PathParts parts = split(path);
  // Deep folders leave nothing for a name: better the file in the root than none at all.
  if (parts.drive.size() + parts.folder.size() + parts.extension.size() >= kLongestPath - 2)
    parts.folder = L"\\";
  std::wstring result = std::wstring(parts.drive).append(parts.folder);
  const std::size_t room = kLongestPath - 1 - result.size();
  // What follows the last dot may be longer than all the room, as in a name that is a sentence.
  const std::wstring_view extension = parts.extension.substr(0, room);
  return result.append(parts.name.substr(0, room - extension.size())).append(extension);
}

std::wstring_view folderOf(std::wstring_view path) {
  const std::size_t separator = path.find_last_of(kSeparators);
  return separator == std::wstring_view::npos ? std::wstring_view() : path.substr(0, separator);
}

std::vector<std::wstring> folderChain(std::wstring_view folder) {
  std::vector<std::wstring> chain;
  for (std::size_t end = 0; end < folder.size();) {
    // One beyond the last end, so that a separator in front, of a root or a server, makes no empty folder.
    end = folder.find_first_of(kSeparators, end + 1);
    if (end == std::wstring_view::npos) end = folder.size();
    chain.emplace_back(folder.substr(0, end));
  }
  return chain;
}

std::wstring chooseOutputPath(const NamingRules& rules, std::wstring_view documentName,
                              std::size_t bufferSize, const NamingWorld& world) {
  const std::wstring path = rawPath(rules, documentName, bufferSize, world);
  // Kept: the folder is decoded together with the name (OutputNameTest.SoAreThoseInTheFolder).
  return withinPathLimit(decodeDocumentName(fitting(path, bufferSize)));
}

std::optional<std::wstring> uniquePath(const NamingRules& rules, std::wstring path, std::size_t bufferSize,
                                       const NamingWorld& world) {
  // Were every number taken, all other jobs of the machine would wait for this one for ever.
  constexpr int kNumbers = 1000;
  for (int number = 0; isTaken(rules, path, world); ++number) {
    const std::size_t dot = path.rfind(L'.');
    // Without a dot there is nothing that a number could take the place of.
    if (dot == std::wstring::npos || number == kNumbers) return std::nullopt;
    // Kept: the ending is ".pdf" whatever the default extension is
    // (OutputNameTest.TheNumberedFormEndsInPdfWhateverTheExtension).
    path = fitting(path.substr(0, dot) + L'.' + std::to_wstring(world.random()) + L".pdf", bufferSize);
  }
  return path;
}

std::wstring virtualizedPath(std::wstring_view path, std::wstring_view applicationData) {
  if (applicationData.empty()) return {};
  std::wstring folder(applicationData);
  // The browser mirrors the drive as a folder of one letter: a colon cannot stand in a folder's name.
  if (folder.size() >= 2 && folder[1] == L':') folder.erase(1, 1);
  std::wstring result(applicationData);
  result.append(L"\\Microsoft\\Windows\\Temporary Internet Files\\Virtualized\\").append(folder);
  if (!result.ends_with(L'\\')) result += L'\\';
  return result.append(lastComponent(path, L"\\"));
}
}  // namespace quillpress::driver
