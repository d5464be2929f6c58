#include "cli/spool/AtomicOutput.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <utility>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"

namespace quillpress::cli {

namespace {

constexpr unsigned kPermissionBits = 07777;

unsigned newFilePermissions() {
  // The mask can only be read by setting it. No other thread makes files yet.
  const mode_t mask = umask(0);
  umask(mask);
  return 0666U & ~mask;
}

std::string folderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  // A bare name lies in the working folder.
  return folder.empty() ? "." : folder;
}

std::string temporaryFolder() {
  const char* const folder = std::getenv("TMPDIR");
  // The variable often outlives the folder that it names, as one of a session that has ended.
  const bool isUsable = folder != nullptr && access(folder, W_OK | X_OK) == 0;
  return isUsable ? folder : "/tmp";
}

[[noreturn]] void fail(const std::string& what) {
  throw OutputError(what + ": " + systemReason());
}

bool isWritable(int descriptor) {
  const int flags = fcntl(descriptor, F_GETFL);
  return flags != -1 && (flags & O_ACCMODE) != O_RDONLY;
}

bool isClosed(std::FILE* file) {
  return std::fclose(file) == 0;
}

// Whether the file is on the disk, as far as its file system can promise that at all.
bool isSynced(const Descriptor& file) {
  return fsync(file.get()) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
}

// Follows symbolic links, so that the file behind one is replaced and not the link.
std::string resolved(const std::string& path) {
  std::error_code error;
  const auto target = std::filesystem::canonical(path, error);
  return error ? path : target.string();
}

}  // namespace

AtomicOutput::AtomicOutput(const std::string& path) : permissions_(newFilePermissions()) {
  if (path == "-") {
    // A stream that cannot be written is found now, not when the job has run.
    if (!isWritable(STDOUT_FILENO)) {
      errno = EBADF;
      fail("cannot be written");
    }
    isPlainFile_ = false;
    file_ = stdout;
    folder_ = temporaryFolder();
  } else {
    examine(path);
  }
}

void AtomicOutput::examine(const std::string& path) {
  struct stat status {};
  const bool exists = stat(path.c_str(), &status) == 0;
  if (exists && S_ISDIR(status.st_mode)) throw OutputError("is a directory");
  // Replacing needs only the folder's permission; a file that its owner has protected stays all the same.
  if (exists && access(path.c_str(), W_OK) != 0) throw OutputError("cannot be written: " + systemReason());
  target_ = exists ? resolved(path) : path;
  // A device or a pipe cannot be replaced without harm, and has no half-written state to be seen.
  isPlainFile_ = !exists || S_ISREG(status.st_mode);
  if (exists && isPlainFile_) permissions_ = status.st_mode & kPermissionBits;
  folder_ = isPlainFile_ ? folderOf(target_) : temporaryFolder();
}

AtomicOutput::~AtomicOutput() {
  if (file_ != nullptr && file_ != stdout) std::fclose(file_);
}

std::FILE* AtomicOutput::file() {
  if (file_ != nullptr) return file_;
  if (isPlainFile_) {
    Descriptor descriptor = openBeside();
    file_ = descriptor ? fdopen(descriptor.get(), "w") : nullptr;
    if (file_ != nullptr) static_cast<void>(descriptor.release());
  } else {
    file_ = std::fopen(target_.c_str(), "we");
  }
  if (file_ == nullptr) fail("cannot be written");
  return file_;
}

Descriptor AtomicOutput::openBeside() {
  // Without a way to name it later, a nameless file would be lost.
  if (canLinkNameless()) {
    Descriptor nameless = openNameless(folder_);
    isNameless_ = static_cast<bool>(nameless);
    if (nameless) return nameless;
  }
  return name_.create(folder_);
}

void AtomicOutput::commit() {
  std::FILE* const written = file();
  const bool isFlushed = std::fflush(written) == 0 && std::ferror(written) == 0;
  if (!isFlushed) fail("cannot be written");
  const off_t end = ftello(written);
  if (end > 0) bytesWritten_ = static_cast<std::uint64_t>(end);
  if (file_ == stdout) return;
  if (isPlainFile_) {
    putInPlace();
  } else if (!isClosed(std::exchange(file_, nullptr))) {
    fail("cannot be written");
  }
}

// The order matters: the bytes are on the disk before the name is, so that no crash leaves a name with
// nothing behind it; and a nameless file gets its name while it is still open.
void AtomicOutput::putInPlace() {
  const Descriptor kept(dup(fileno(file_)));
  // Some file systems keep no permissions; the file is whole all the same.
  if (kept) static_cast<void>(fchmod(kept.get(), permissions_) == 0);
  if (!kept || !isClosed(std::exchange(file_, nullptr)) || !isSynced(kept)) fail("cannot be written");
  if (isNameless_ && !name_.link(kept, folder_)) fail("cannot be put in place");
  if (!name_.moveTo(target_)) fail("cannot be put in place");
}

}  // namespace quillpress::cli
