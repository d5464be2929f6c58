#include "cli/system/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace quillpress::cli {

namespace {

constexpr unsigned kPermissionBits = 07777;
constexpr unsigned kReadAndWrite = 0666;

FileStatus::Kind kindOf(mode_t mode) {
  if (S_ISREG(mode)) return FileStatus::Kind::kPlain;
  return S_ISDIR(mode) ? FileStatus::Kind::kFolder : FileStatus::Kind::kOther;
}

FileStatus statusFrom(const struct stat& status) {
  return {kindOf(status.st_mode), status.st_mode & kPermissionBits, status.st_dev, status.st_ino};
}

std::optional<FileStatus> statusOfDescriptor(int number) {
  struct stat status {};
  if (fstat(number, &status) != 0) return std::nullopt;
  return statusFrom(status);
}

// A signal that is handled interrupts a call, and nothing has been lost.
template <typename Call>
std::ptrdiff_t repeated(Call call) {
  while (true) {
    const ssize_t count = call();
    if (count >= 0 || errno != EINTR) return count;
  }
}

}  // namespace

std::optional<FileStatus> statusOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return statusFrom(status);
}

std::optional<FileStatus> statusOf(const Descriptor& file) {
  return statusOfDescriptor(file.get());
}

std::optional<FileStatus> statusOfStandardOutput() {
  return statusOfDescriptor(STDOUT_FILENO);
}

Descriptor openForReading(const std::string& path) {
  return Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
}

Descriptor openForAppending(const std::string& path, Contents contents) {
  const int truncation = contents == Contents::kDropped ? O_TRUNC : 0;
  return Descriptor(
      open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | truncation, kReadAndWrite));
}

std::FILE* openDevice(const std::string& path) {
  return std::fopen(path.c_str(), "we");
}

Descriptor copyOfStandardInput() {
  return Descriptor(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
}

Descriptor copyOfStandardOutput() {
  return Descriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0));
}

Descriptor copyOf(std::FILE* stream) {
  return Descriptor(fcntl(fileno(stream), F_DUPFD_CLOEXEC, 0));
}

std::FILE* streamOf(Descriptor& file, const char* mode) {
  std::FILE* const stream = file ? fdopen(file.get(), mode) : nullptr;
  if (stream != nullptr) static_cast<void>(file.release());
  return stream;
}

std::ptrdiff_t readFrom(const Descriptor& file, char* buffer, std::size_t size) {
  return repeated([&] { return read(file.get(), buffer, size); });
}

std::ptrdiff_t writeTo(const Descriptor& file, std::string_view bytes) {
  return repeated([&] { return write(file.get(), bytes.data(), bytes.size()); });
}

std::ptrdiff_t readAt(const Descriptor& file, std::uint64_t offset, char* buffer, std::size_t size) {
  return repeated([&] { return pread(file.get(), buffer, size, static_cast<off_t>(offset)); });
}

std::ptrdiff_t writeAt(const Descriptor& file, std::uint64_t offset, std::string_view bytes) {
  return repeated([&] { return pwrite(file.get(), bytes.data(), bytes.size(), static_cast<off_t>(offset)); });
}

bool cutFile(const Descriptor& file, std::uint64_t size) {
  return ftruncate(file.get(), static_cast<off_t>(size)) == 0;
}

bool isWritable(const std::string& path) {
  return access(path.c_str(), W_OK) == 0;
}

bool isStandardOutputWritable() {
  const int flags = fcntl(STDOUT_FILENO, F_GETFL);
  return flags != -1 && (flags & O_ACCMODE) != O_RDONLY;
}

std::uint64_t positionOf(std::FILE* stream) {
  const off_t position = ftello(stream);
  return position > 0 ? static_cast<std::uint64_t>(position) : 0;
}

unsigned newFilePermissions() {
  // The mask can only be read by setting it.
  const mode_t mask = umask(0);
  umask(mask);
  return kReadAndWrite & ~mask;
}

bool setPermissions(const Descriptor& file, unsigned permissions) {
  return fchmod(file.get(), permissions) == 0;
}

bool isSynced(const Descriptor& file) {
  return fsync(file.get()) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
}

}  // namespace quillpress::cli
