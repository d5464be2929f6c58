#include "cli/job/JobFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/job/DosEps.h"

namespace quillpress::cli {

namespace {

constexpr std::size_t kBlockSize = 64UL * 1024;

struct stat statusOf(int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) throw InputError("cannot be read: " + systemReason());
  return status;
}

int openedForReading(const std::string& path) {
  if (path == "-") return STDIN_FILENO;
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) throw InputError("cannot be opened: " + systemReason());
  return descriptor;
}

}  // namespace

JobFile::JobFile(const std::string& path) : descriptor_(openedForReading(path)) {
  struct stat status {};
  if (fstat(descriptor_, &status) == 0 && S_ISDIR(status.st_mode)) {
    if (descriptor_ != STDIN_FILENO) close(descriptor_);
    throw InputError("is a directory, not a job");
  }
}

JobFile::~JobFile() {
  if (descriptor_ != STDIN_FILENO) close(descriptor_);
}

bool JobFile::isRepeatable() const {
  return descriptor_ != STDIN_FILENO && S_ISREG(statusOf(descriptor_).st_mode);
}

bool JobFile::isSameAs(const std::string& path) const {
  struct stat other {};
  if (stat(path.c_str(), &other) != 0 || !S_ISREG(other.st_mode)) return false;
  const struct stat own = statusOf(descriptor_);
  return own.st_dev == other.st_dev && own.st_ino == other.st_ino;
}

void JobFile::pumpInto(ByteSink& sink) {
  std::vector<char> buffer(kBlockSize);
  std::uint64_t offset = 0;
  std::size_t size = fill(buffer.data(), buffer.size());
  if (size == 0) throw InputError("is empty");
  const FileSection section = postscriptSection({buffer.data(), size});
  while (size > 0 && offset < section.end) {
    const std::uint64_t first = std::max(offset, section.begin);
    const std::uint64_t last = std::min(offset + size, section.end);
    if (first < last) sink.write({buffer.data() + (first - offset), last - first}, first);
    offset += size;
    size = fill(buffer.data(), buffer.size());
  }
  sink.finish();
}

/** Reads until the buffer is full or the file has ended, so that blocks do not depend on how a pipe is fed.
 */
std::size_t JobFile::fill(char* buffer, std::size_t size) {
  std::size_t filled = 0;
  while (filled < size) {
    const ssize_t count = read(descriptor_, buffer + filled, size - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw InputError("cannot be read: " + systemReason());
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
  }
  return filled;
}

}  // namespace quillpress::cli
