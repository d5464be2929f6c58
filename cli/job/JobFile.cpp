#include "cli/job/JobFile.h"

#include <algorithm>
#include <vector>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/job/DosEps.h"
#include "cli/system/Files.h"

namespace quillpress::cli {

namespace {

// As much as a pipe holds at a time.
constexpr std::size_t kBlockSize = 64UL * 1024;

Descriptor openedForReading(const std::string& path) {
  // A copy of standard input, so that there is one rule of who closes what.
  Descriptor file = path == "-" ? copyOfStandardInput() : openForReading(path);
  if (!file) throw InputError("cannot be opened: " + systemReason());
  return file;
}

}  // namespace

JobFile::JobFile(const std::string& path) : file_(openedForReading(path)) {
  const auto status = statusOf(file_);
  // Opening a folder works, and only reading it fails, with words that help nobody.
  if (status && status->kind == FileStatus::Kind::kFolder) {
    throw InputError("is a directory, not a job");
  }
}

bool JobFile::isSameAs(const std::string& path) const {
  // The name says nothing: links, and descriptors that a shell has opened, lead to the same file.
  const auto other = path == "-" ? statusOfStandardOutput() : statusOf(path);
  if (!other || other->kind != FileStatus::Kind::kPlain) return false;
  const auto own = statusOf(file_);
  if (!own) throw InputError("cannot be read: " + systemReason());
  return own->isSameFileAs(*other);
}

void JobFile::pumpInto(ByteSink& sink) {
  std::vector<char> buffer(kBlockSize);
  std::uint64_t offset = 0;
  std::size_t size = read(buffer.data(), buffer.size());
  if (size == 0) throw InputError("is empty");
  const FileSection section = postscriptSection({buffer.data(), size});
  while (size > 0 && offset < section.end) {
    // Only where the block and the section overlap; offsets stay those of the file.
    const std::uint64_t first = std::max(offset, section.begin);
    const std::uint64_t last = std::min(offset + size, section.end);
    if (first < last) {
      const auto begin = static_cast<std::size_t>(first - offset);
      sink.write({buffer.data() + begin, static_cast<std::size_t>(last - first)}, first);
    }
    offset += size;
    size = read(buffer.data(), buffer.size());
  }
  sink.finish();
}

// Reads until the buffer is full or the file has ended, so that blocks do not depend on how a pipe is fed.
std::size_t JobFile::read(char* buffer, std::size_t size) {
  std::size_t filled = 0;
  while (filled < size) {
    const std::ptrdiff_t count = readFrom(file_, buffer + filled, size - filled);
    if (count < 0) throw InputError("cannot be read: " + systemReason());
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
  }
  return filled;
}

}  // namespace quillpress::cli
