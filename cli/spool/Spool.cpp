#include "cli/spool/Spool.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"

namespace quillpress::cli {

namespace {

int openNamed(const std::string& folder) {
  std::string name = folder + "/.quillpress-XXXXXX";
  const int descriptor = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor >= 0) unlink(name.c_str());
  return descriptor;
}

int openTemporary(const std::string& folder) {
  const int descriptor = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (descriptor >= 0) return descriptor;
  // Not every file system can make nameless files.
  return openNamed(folder);
}

}  // namespace

Spool::Spool(const std::string& folder) : descriptor_(openTemporary(folder)) {
  if (descriptor_ < 0)
    throw OutputError("cannot be written: no temporary file in " + folder + ": " + systemReason());
}

Spool::~Spool() {
  close(descriptor_);
}

Spool::Piece Spool::append(std::string_view bytes) {
  const Piece piece{size_, bytes.size()};
  while (!bytes.empty()) {
    const ssize_t count = pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(size_));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw OutputError("cannot be written: the temporary file beside it: " + systemReason());
    size_ += static_cast<std::uint64_t>(count);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return piece;
}

void Spool::read(std::uint64_t offset, char* buffer, std::size_t size) const {
  while (size > 0) {
    const ssize_t count = pread(descriptor_, buffer, size, static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) throw OutputError("cannot be written: the temporary file beside it: " + systemReason());
    offset += static_cast<std::uint64_t>(count);
    buffer += count;
    size -= static_cast<std::size_t>(count);
  }
}

void Spool::cutTo(std::uint64_t size) {
  // Only saves room on the disk, so a failure does no harm.
  static_cast<void>(ftruncate(descriptor_, static_cast<off_t>(size)) == 0);
  size_ = size;
}

}  // namespace quillpress::cli
