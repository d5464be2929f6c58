#include "tools/launcher/PdfConversion.h"

#include <objbase.h>
#include <shellapi.h>

#include <array>

#include "tools/launcher/LogLine.h"
#include "tools/launcher/PdfNames.h"
#include "umpd/win32/ProgramRunner.h"
#include "umpd/win32/Resources.h"
#include "umpd/win32/Windows.h"

namespace quillpress::launcher {
namespace {

// Of quillpress.exe: with these it has written a PDF.
constexpr unsigned long kDone = 0;
constexpr unsigned long kDoneWithWarnings = 5;
constexpr unsigned long kPartial = 6;

constexpr unsigned kMostNames = 1000;

std::wstring programBeside() {
  std::array<wchar_t, 4096> path{};
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size() - 1));
  return std::wstring(folderOf(path.data())).append(L"quillpress.exe");
}

bool exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// Some drivers write PDF themselves.
bool isPdf(const std::wstring& path) {
  const driver::FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  std::array<char, 5> begin{};
  DWORD count = 0;
  return ReadFile(file.get(), begin.data(), static_cast<DWORD>(begin.size()), &count, nullptr) != 0 &&
         std::string_view(begin.data(), count) == "%PDF-";
}

std::wstring absolute(const std::wstring& path) {
  std::array<wchar_t, 4096> full{};
  const DWORD size = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  return size < full.size() ? std::wstring(full.data(), size) : path;
}

// One launcher converts one file at a time, so its number makes the name its own.
std::wstring workingName() {
  return L"~quillpress-" + std::to_wstring(GetCurrentProcessId()) + L".pdf";
}

// Nothing that is there is replaced.
std::optional<std::wstring> movedAside(const std::wstring& made, const std::wstring& wanted) {
  for (unsigned number = 1; number <= kMostNames; ++number) {
    std::wstring name = numbered(wanted, number);
    if (MoveFileExW(made.c_str(), name.c_str(), MOVEFILE_WRITE_THROUGH) != 0) return name;
    if (!exists(name)) break;
  }
  return std::nullopt;
}

// Viewers may be asked by way of COM.
class ComForThisThread {
 public:
  ComForThisThread() : isHad_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ComForThisThread(const ComForThisThread&) = delete;
  ComForThisThread& operator=(const ComForThisThread&) = delete;
  ~ComForThisThread() {
    if (isHad_) CoUninitialize();
  }

 private:
  bool isHad_;
};

}  // namespace

PdfConversion::PdfConversion(const Options& options, Log& log, HANDLE stop)
    : options_(options), log_(log), stop_(stop), program_(programBeside()) {}

bool PdfConversion::isWanted() const {
  switch (options_.conversion) {
    case Conversion::kAlways:
      return true;
    case Conversion::kNever:
      return false;
    case Conversion::kWhenInstalled:
      return !options_.command && exists(program_);
  }
  return false;
}

std::optional<std::wstring> PdfConversion::convert(const std::wstring& file) {
  const std::wstring job = absolute(file);
  if (isPdf(job)) return job;
  if (!options_.folder.empty()) CreateDirectoryW(options_.folder.c_str(), nullptr);
  driver::ProgramRun run;
  run.application = program_;
  run.commandLine = converterCommandLine(program_, job, workingName());
  // The working file becomes the PDF, so it must be on the same drive.
  run.workingFolder = options_.folder.empty() ? std::wstring(folderOf(job)) : absolute(options_.folder);
  run.isDetached = true;
  run.waitForEnd = true;
  run.endWhen = stop_;
  unsigned long status = 0;
  if (!driver::startProgram(run, &status)) {
    log_.writeLine(logLine({L"cannot run", run.commandLine}));
    return std::nullopt;
  }
  const bool isMade = status == kDone || status == kDoneWithWarnings || status == kPartial;
  const std::wstring made = inFolder(run.workingFolder, workingName());
  auto pdf = isMade ? putInPlace(made, job, status == kPartial) : std::nullopt;
  if (pdf) {
    log_.writeLine(logLine({L"converted", *pdf, std::to_wstring(status)}));
  } else {
    DeleteFileW(made.c_str());
    log_.writeLine(logLine({L"not converted", job, std::to_wstring(status)}));
  }
  return pdf;
}

std::optional<std::wstring> PdfConversion::putInPlace(const std::wstring& made, const std::wstring& file,
                                                      bool isPartial) {
  const std::wstring pdf = pdfPathOf(file);
  if (!options_.folder.empty()) return movedAside(made, inFolder(absolute(options_.folder), pdf));
  if (pdf != file) return movedAside(made, pdf);
  // What is missing in the PDF is still in the job.
  if (isPartial) CopyFileW(file.c_str(), (file + L".ps").c_str(), FALSE);
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (MoveFileExW(made.c_str(), file.c_str(), kHow) == 0) return std::nullopt;
  return pdf;
}

void PdfConversion::open(const std::wstring& pdf) {
  const ComForThisThread com;
  SHELLEXECUTEINFOW how{};
  how.cbSize = sizeof how;
  // No box: nobody may be there to answer it. And the thread may be gone before the viewer has come.
  how.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_FLAG_DDEWAIT;
  how.lpVerb = L"open";
  how.lpFile = pdf.c_str();
  how.nShow = SW_SHOWNORMAL;
  if (ShellExecuteExW(&how) == 0) log_.writeLine(logLine({L"cannot open", pdf}));
}

}  // namespace quillpress::launcher
