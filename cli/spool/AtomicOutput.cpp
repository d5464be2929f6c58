#include "cli/spool/AtomicOutput.h"

#include <cerrno>
#include <utility>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/system/Files.h"
#include "cli/system/Paths.h"

namespace quillpress::cli {

namespace {

constexpr std::size_t kBufferSize = 64UL * 1024;

std::string folderOf(const std::string& path) {
  std::string folder = utf8Of(pathOf(path).parent_path());
  // A bare name lies in the working folder.
  return folder.empty() ? "." : folder;
}

[[noreturn]] void fail(const std::string& what) {
  throw OutputError(what + ": " + systemReason());
}

bool isClosed(std::FILE* file) {
  return std::fclose(file) == 0;
}

}  // namespace

AtomicOutput::AtomicOutput(const std::string& path) : permissions_(newFilePermissions()) {
  if (path == "-") {
    // A stream that cannot be written is found now, not when the job has run.
    if (!isStandardOutputWritable()) {
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
  const auto status = statusOf(path);
  if (status && status->kind == FileStatus::Kind::kFolder) throw OutputError("is a directory");
  // Replacing needs only the folder's permission; a file that its owner has protected stays all the same.
  if (status && !isWritable(path)) throw OutputError("cannot be written: " + systemReason());
  // The file behind a symbolic link is replaced, and not the link.
  target_ = status ? whereLinksLead(path) : path;
  // A device or a pipe cannot be replaced without harm, and has no half-written state to be seen.
  isPlainFile_ = !status || status->kind == FileStatus::Kind::kPlain;
  if (status && isPlainFile_) permissions_ = status->permissions;
  folder_ = isPlainFile_ ? folderOf(target_) : temporaryFolder();
}

AtomicOutput::~AtomicOutput() {
  if (file_ != nullptr && file_ != stdout) std::fclose(file_);
}

std::FILE* AtomicOutput::file() {
  if (file_ != nullptr) return file_;
  if (isPlainFile_) {
    Descriptor descriptor = openBeside();
    file_ = streamOf(descriptor, "wb");
  } else {
    file_ = openDevice(target_);
  }
  if (file_ == nullptr) fail("cannot be written");
  // Blocks of the usual few kilobytes take a twentieth of a short job's time.
  if (isPlainFile_) std::setvbuf(file_, nullptr, _IOFBF, kBufferSize);
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
  bytesWritten_ = positionOf(written);
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
  const Descriptor kept = copyOf(file_);
  // Some file systems keep no permissions; the file is whole all the same.
  if (kept) static_cast<void>(setPermissions(kept, permissions_));
  if (!kept || !isClosed(std::exchange(file_, nullptr)) || !isSynced(kept)) fail("cannot be written");
  // Most places are free, and nothing has to be known of a name in between then.
  if (isNameless_ && linkNameless(kept, target_)) return;
  if (isNameless_ && !name_.link(kept, folder_)) fail("cannot be put in place");
  if (!name_.moveTo(kept, target_)) fail("cannot be put in place");
}

}  // namespace quillpress::cli
