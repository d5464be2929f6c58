#include "cli/system/TemporaryName.h"

#include <cerrno>
#include <mutex>
#include <string>

#include "cli/system/windows/Handle.h"
#include "cli/system/windows/SystemError.h"
#include "cli/system/windows/WideText.h"

namespace quillpress::cli {

namespace {

// Names hold the number of the process and a count, so a second try is already rare.
constexpr int kMostNames = 100;
// A scanner of viruses or an index may have a file open for a moment.
constexpr int kMostMoves = 10;
constexpr DWORD kPause = 20;

constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_DELETE;

// What a handler sees, which runs on a thread of its own.
class GuardedName {
 public:
  GuardedName() { InitializeCriticalSection(&section_); }
  GuardedName(const GuardedName&) = delete;
  GuardedName& operator=(const GuardedName&) = delete;
  // The handler may run until the very end of the process.
  ~GuardedName() = default;

  void lock() { EnterCriticalSection(&section_); }
  void unlock() { LeaveCriticalSection(&section_); }

  std::wstring path;  // empty when there is none

 private:
  CRITICAL_SECTION section_{};
};

GuardedName& guardedName() {
  static GuardedName name;
  return name;
}

// Ctrl+C, Ctrl+Break, the console closed. A file that is open goes by itself; this is for the moment in which
// it already waits for its place.
BOOL WINAPI removeGuardedName(DWORD /*kind*/) {
  GuardedName& guarded = guardedName();
  // For good: nothing is moved any more, and the system ends the process next.
  guarded.lock();
  if (!guarded.path.empty()) DeleteFileW(guarded.path.c_str());
  return FALSE;
}

std::string freshName(const std::string& folder) {
  static unsigned count = 0;
  return folder + "\\.quillpress-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count);
}

struct NewFile {
  std::string name;
  Handle handle;
};

NewFile createIn(const std::string& folder, DWORD flags) {
  constexpr DWORD kAccess = GENERIC_READ | GENERIC_WRITE | DELETE;
  NewFile file;
  for (int i = 0; i < kMostNames; ++i) {
    file.name = freshName(folder);
    file.handle = Handle(
        CreateFileW(widePath(file.name).c_str(), kAccess, kSharing, nullptr, CREATE_NEW, flags, nullptr));
    if (file.handle || GetLastError() != ERROR_FILE_EXISTS) break;
  }
  return file;
}

// Whether the file goes with its last handle, so that even a process that is killed leaves none. File systems
// that do not know this keep the name for those who look for it.
void setVanishing(HANDLE file, bool isVanishing) {
  FILE_DISPOSITION_INFO disposition{};
  disposition.DeleteFile = isVanishing ? TRUE : FALSE;
  SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof disposition);
}

bool isMoved(const std::wstring& from, const std::wstring& to) {
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  for (int i = 0; i < kMostMoves; ++i) {
    if (MoveFileExW(from.c_str(), to.c_str(), kHow) != 0) return true;
    const DWORD error = GetLastError();
    if (error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION) break;
    Sleep(kPause);
    SetLastError(error);
  }
  takeSystemError();
  return false;
}

}  // namespace

TemporaryName::~TemporaryName() {
  if (path_.empty()) return;
  DeleteFileW(widePath(path_).c_str());
  forget();
}

Descriptor TemporaryName::create(const std::string& folder) {
  NewFile file = createIn(folder, FILE_ATTRIBUTE_NORMAL);
  if (file.handle) {
    setVanishing(file.handle.get(), true);
    guard(file.name);
  }
  return descriptorOf(std::move(file.handle), Access::kWriting);
}

// A file without a name stays without one here.
bool TemporaryName::link(const Descriptor& /*file*/, const std::string& /*folder*/) {
  errno = ENOSYS;
  return false;
}

bool TemporaryName::moveTo(const Descriptor& file, const std::string& target) {
  GuardedName& guarded = guardedName();
  const std::lock_guard lock(guarded);
  setVanishing(handleOf(file), false);
  if (!isMoved(widePath(path_), widePath(target))) return false;
  guarded.path.clear();
  path_.clear();
  return true;
}

void TemporaryName::guard(const std::string& path) {
  GuardedName& guarded = guardedName();
  const std::lock_guard lock(guarded);
  static const bool isInstalled = SetConsoleCtrlHandler(&removeGuardedName, TRUE) != 0;
  static_cast<void>(isInstalled);
  path_ = path;
  guarded.path = widePath(path);
}

void TemporaryName::forget() {
  GuardedName& guarded = guardedName();
  const std::lock_guard lock(guarded);
  guarded.path.clear();
  path_.clear();
}

Descriptor openNameless(const std::string& folder) {
  return descriptorOf(createIn(folder, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE).handle,
                      Access::kWriting);
}

bool canLinkNameless() {
  return false;
}

bool linkNameless(const Descriptor& /*file*/, const std::string& /*name*/) {
  errno = ENOSYS;
  return false;
}

Descriptor openTemporary(const std::string& folder) {
  return openNameless(folder);
}

}  // namespace quillpress::cli
