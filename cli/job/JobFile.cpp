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

// As much as a pipe holds at a time.
constexpr std::size_t kBlockSize = 64UL * 1024;

struct stat statusOf(const Descriptor& file) {
  struct stat status {};
  if (fstat(file.get(), &status) != 0) throw InputError("cannot be read: " + systemReason());
  return status;
}

Descriptor openedForReading(const std::string& path) {
  // A copy of standard input, so that there is one rule of who closes what.
  Descriptor file(path == "-" ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                              : open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file) throw InputError("cannot be opened: " + systemReason());
  return file;
}

}  // namespace

JobFile::JobFile(const std::string& path) : file_(openedForReading(path)) {
  struct stat status {};
  // Opening a folder works, and only reading it fails, with words that help nobody.
  if (fstat(file_.get(), &status) == 0 && S_ISDIR(status.st_mode)) {
    throw InputError("is a directory, not a job");
  }
}

bool JobFile::isSameAs(const std::string& path) const {
  struct stat other {};
  // The name says nothing: links, and descriptors that a shell has opened, lead to the same file.
  const int found = path == "-" ? fstat(STDOUT_FILENO, &other) : stat(path.c_str(), &other);
  if (found != 0 || !S_ISREG(other.st_mode)) return false;
  const struct stat own = statusOf(file_);
  return own.st_dev == other.st_dev && own.st_ino == other.st_ino;
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
    if (first < last) sink.write({buffer.data() + (first - offset), last - first}, first);
    offset += size;
    size = read(buffer.data(), buffer.size());
  }
  sink.finish();
}

// Reads until the buffer is full or the file has ended, so that blocks do not depend on how a pipe is fed.
std::size_t JobFile::read(char* buffer, std::size_t size) {
  std::size_t filled = 0;
  while (filled < size) {
    const ssize_t count = ::read(file_.get(), buffer + filled, size - filled);
    // A signal that is handled interrupts the call, and nothing has been lost.
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw InputError("cannot be read: " + systemReason());
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
  }
  return filled;
}

}  // namespace quillpress::cli
