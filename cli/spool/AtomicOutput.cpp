#include "cli/spool/AtomicOutput.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"

namespace quillpress::cli {

namespace {

constexpr unsigned kPermissionBits = 07777;

unsigned newFilePermissions() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666U & ~mask;
}

std::string folderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

std::string temporaryFolder() {
  const char* const folder = std::getenv("TMPDIR");
  return folder == nullptr || *folder == '\0' ? "/tmp" : folder;
}

/** Follows symbolic links, so that the file behind one is replaced and not the link. */
std::string resolved(const std::string& path) {
  std::error_code error;
  const auto target = std::filesystem::canonical(path, error);
  return error ? path : target.string();
}

}  // namespace

AtomicOutput::AtomicOutput(const std::string& path) : permissions_(newFilePermissions()) {
  if (path == "-") {
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
  if (exists && access(path.c_str(), W_OK) != 0) throw OutputError("cannot be written: " + systemReason());
  target_ = exists ? resolved(path) : path;
  isPlainFile_ = !exists || S_ISREG(status.st_mode);
  if (exists && isPlainFile_) permissions_ = status.st_mode & kPermissionBits;
  folder_ = isPlainFile_ ? folderOf(target_) : temporaryFolder();
}

AtomicOutput::~AtomicOutput() {
  discard();
}

std::FILE* AtomicOutput::file() {
  if (file_ != nullptr) return file_;
  if (isPlainFile_) {
    openBeside();
  } else {
    file_ = std::fopen(target_.c_str(), "we");
  }
  if (file_ == nullptr) throw OutputError("cannot be written: " + systemReason());
  return file_;
}

void AtomicOutput::openBeside() {
  std::string name = folder_ + "/.quillpress-XXXXXX";
  const int descriptor = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor < 0) return;
  temporary_ = name;
  file_ = fdopen(descriptor, "w");
  if (file_ == nullptr) close(descriptor);
}

void AtomicOutput::commit() {
  std::FILE* const written = file();
  const bool isFlushed = std::fflush(written) == 0 && std::ferror(written) == 0;
  if (!isFlushed) throw OutputError("cannot be written: " + systemReason());
  if (file_ == stdout) return;
  // Some file systems keep no permissions; the file is whole all the same.
  if (isPlainFile_) static_cast<void>(fchmod(fileno(file_), permissions_) == 0);
  const bool isClosed = std::fclose(file_) == 0;
  file_ = nullptr;
  if (!isClosed) throw OutputError("cannot be written: " + systemReason());
  if (!isPlainFile_) return;
  if (std::rename(temporary_.c_str(), target_.c_str()) != 0) {
    throw OutputError("cannot be put in place: " + systemReason());
  }
  temporary_.clear();
}

void AtomicOutput::discard() {
  if (file_ != nullptr && file_ != stdout) std::fclose(file_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

}  // namespace quillpress::cli
