#include "tools/launcher/PdfNames.h"

#include <algorithm>
#include <array>
#include <cwctype>

#include "tools/launcher/CommandLine.h"

namespace quillpress::launcher {
namespace {

constexpr std::wstring_view kPdf = L".pdf";
constexpr std::array<std::wstring_view, 3> kJobs{L".ps", L".eps", L".prn"};
// No job of a printer takes so long, save one that never ends.
constexpr const wchar_t* kSeconds = L"600";

bool endsIn(std::wstring_view path, std::wstring_view ending) {
  if (path.size() < ending.size()) return false;
  path.remove_prefix(path.size() - ending.size());
  return std::equal(path.begin(), path.end(), ending.begin(), [](wchar_t own, wchar_t other) {
    return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(own))) == other;
  });
}

}  // namespace

std::wstring pdfPathOf(std::wstring_view file) {
  if (endsIn(file, kPdf)) return std::wstring(file);
  for (const std::wstring_view ending : kJobs) {
    if (endsIn(file, ending)) file.remove_suffix(ending.size());
  }
  return std::wstring(file).append(kPdf);
}

std::wstring inFolder(std::wstring_view folder, std::wstring_view path) {
  std::wstring moved(folder);
  if (!moved.ends_with(L'\\') && !moved.ends_with(L'/')) moved += L'\\';
  return moved.append(path.substr(folderOf(path).size()));
}

std::wstring numbered(std::wstring_view path, unsigned number) {
  if (number < 2) return std::wstring(path);
  path.remove_suffix(kPdf.size());
  return std::wstring(path).append(L" (").append(std::to_wstring(number)).append(L")").append(kPdf);
}

std::wstring_view folderOf(std::wstring_view path) {
  return path.substr(0, path.find_last_of(L"\\/:") + 1);
}

// The names come from whoever prints. Behind "--" none can be an option, and the output, in which "%d" would
// stand for the number of a page, is never one of them.
std::wstring converterCommandLine(const std::wstring& program, const std::wstring& file,
                                  const std::wstring& output) {
  return joinCommandLine({program, L"--quiet", L"--timeout", kSeconds, L"-o", output, L"--", file});
}

}  // namespace quillpress::launcher
