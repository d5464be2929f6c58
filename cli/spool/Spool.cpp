#include "cli/spool/Spool.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/system/posix/BlockedSignals.h"
#include "cli/system/TemporaryName.h"

namespace quillpress::cli {

namespace {

// Not every file system can make nameless files; there the name goes at once.
Descriptor openUnlinked(const std::string& folder) {
  const BlockedSignals quiet;
  std::string name = folder + "/.quillpress-XXXXXX";
  Descriptor file(mkostemp(name.data(), O_CLOEXEC));
  if (file) unlink(name.c_str());
  return file;
}

Descriptor openTemporary(const std::string& folder) {
  Descriptor file = openNameless(folder);
  return file ? std::move(file) : openUnlinked(folder);
}

}  // namespace

Spool::Spool(const std::string& folder) : file_(openTemporary(folder)) {
  if (!file_) throw OutputError("cannot be written: no temporary file in " + folder + ": " + systemReason());
}

Spool::Piece Spool::append(std::string_view bytes) {
  const Piece piece{size_, bytes.size()};
  while (!bytes.empty()) {
    // At an offset of our own, since pieces are read while others are written.
    const ssize_t count = pwrite(file_.get(), bytes.data(), bytes.size(), static_cast<off_t>(size_));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw OutputError("cannot be written: the temporary file beside it: " + systemReason());
    size_ += static_cast<std::uint64_t>(count);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return piece;
}

void Spool::read(std::uint64_t offset, char* buffer, std::size_t size) const {
  while (size > 0) {
    const ssize_t count = pread(file_.get(), buffer, size, static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    // An end of the file here means that somebody has cut it.
    if (count <= 0) throw OutputError("cannot be written: the temporary file beside it: " + systemReason());
    offset += static_cast<std::uint64_t>(count);
    buffer += count;
    size -= static_cast<std::size_t>(count);
  }
}

void Spool::cutTo(std::uint64_t size) {
  // Only saves room on the disk, so a failure does no harm.
  static_cast<void>(ftruncate(file_.get(), static_cast<off_t>(size)) == 0);
  size_ = size;
}

}  // namespace quillpress::cli
