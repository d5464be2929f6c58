#include "umpd/output/OutputName.h"

#include "umpd/output/CleanedName.h"
#include "umpd/output/NameCharacters.h"
#include "umpd/output/PathRules.h"
#include "umpd/win32/Text.h"
#include "umpd/win32/Trace.h"

namespace quillpress {
namespace {

// The values of "SaveFilenameAction" that the choice tells apart.
enum class NameSource { document, defaultName, random, none };

NameSource nameSource(int action) {
  switch (action) {
    case 0:
    case 2:
    case 3:
    case 5:
      return NameSource::document;
    case 1:
      return NameSource::defaultName;
    case 4:
      return NameSource::random;
    default:
      return NameSource::none;
  }
}

// The folder with a separator at its end; empty when there is none or when it does not fit.
std::wstring folderPart(const std::wstring& folder, std::size_t available) {
  if (folder.empty() || folder.size() + 1 >= available) return {};
  const bool isEnded = folder.ends_with(L'\\') || folder.ends_with(L'/');
  return isEnded ? folder : folder + L'\\';
}

std::wstring randomPath(const std::wstring& folder, const NamingRules& rules, const NamingWorld& world) {
  constexpr int kAttempts = 11;
  std::wstring path;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const std::wstring number = std::to_wstring(world.random());
    trace(L"randstring [%s]\n", number.c_str());
    path = folder + number + rules.extension;
    if (!world.exists(path)) break;
  }
  return path;
}

std::wstring rawPath(const NamingRules& rules, std::wstring_view documentName, std::size_t bufferSize,
                     const NamingWorld& world) {
  const NameSource source = nameSource(rules.action);
  if (source == NameSource::defaultName) {
    // The name is taken whole, so the folder gets what it leaves.
    const std::size_t taken = rules.defaultName.size();
    return folderPart(rules.folder, bufferSize > taken ? bufferSize - taken : 0) + rules.defaultName;
  }
  std::wstring folder = folderPart(rules.folder, bufferSize);
  if (source == NameSource::none) return folder;
  if (source == NameSource::document) {
    const std::wstring_view name = documentName.empty() ? std::wstring_view(rules.defaultName) : documentName;
    if (!name.empty()) {
      return folder + cleanedName(name, rules.trimCharacter, rules.extension, bufferSize - folder.size());
    }
  }
  return randomPath(folder, rules, world);
}

}  // namespace

std::wstring chooseOutputPath(const NamingRules& rules, std::wstring_view documentName,
                              std::size_t bufferSize, const NamingWorld& world) {
  const std::wstring path = rawPath(rules, documentName, bufferSize, world);
  // Kept: the folder is decoded together with the name.
  return withinPathLimit(decodeDocumentName(fitting(path, bufferSize)));
}

std::optional<std::wstring> uniquePath(std::wstring path, std::size_t bufferSize, const NamingWorld& world) {
  // Were every number taken, all other jobs of the machine would wait for this one for ever.
  constexpr int kAttempts = 1000;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (!world.exists(path)) return path;
    const std::size_t dot = path.rfind(L'.');
    if (dot == std::wstring::npos) return std::nullopt;
    // Kept: the ending is ".pdf" whatever the default extension is.
    path = fitting(path.substr(0, dot) + L'.' + std::to_wstring(world.random()) + L".pdf", bufferSize);
  }
  return std::nullopt;
}

}  // namespace quillpress
