#include "cli/spool/Spool.h"

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/system/Files.h"
#include "cli/system/TemporaryName.h"

namespace quillpress::cli {

Spool::Spool(const std::string& folder) : file_(openTemporary(folder)) {
  if (!file_) throw OutputError("cannot be written: no temporary file in " + folder + ": " + systemReason());
}

Spool::Piece Spool::append(std::string_view bytes) {
  const Piece piece{size_, bytes.size()};
  while (!bytes.empty()) {
    // At an offset of our own, since pieces are read while others are written.
    const std::ptrdiff_t count = writeAt(file_, size_, bytes);
    if (count < 0) throw OutputError("cannot be written: the temporary file beside it: " + systemReason());
    size_ += static_cast<std::uint64_t>(count);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return piece;
}

void Spool::read(std::uint64_t offset, char* buffer, std::size_t size) const {
  while (size > 0) {
    const std::ptrdiff_t count = readAt(file_, offset, buffer, size);
    // An end of the file here means that somebody has cut it.
    if (count <= 0) throw OutputError("cannot be written: the temporary file beside it: " + systemReason());
    offset += static_cast<std::uint64_t>(count);
    buffer += count;
    size -= static_cast<std::size_t>(count);
  }
}

void Spool::cutTo(std::uint64_t size) {
  // Only saves room on the disk, so a failure does no harm.
  static_cast<void>(cutFile(file_, size));
  size_ = size;
}

}  // namespace quillpress::cli
