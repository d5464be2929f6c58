#include "cli/system/Files.h"

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cerrno>
#include <climits>

#include "cli/system/windows/Handle.h"
#include "cli/system/windows/SystemError.h"
#include "cli/system/windows/WideText.h"

namespace quillpress::cli {

namespace {

constexpr DWORD kSharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr int kStandardInput = 0;
constexpr int kStandardOutput = 1;

// Only with this flag folders can be opened.
constexpr DWORD kFolderToo = FILE_FLAG_BACKUP_SEMANTICS;

Handle openExisting(const std::string& path, DWORD access) {
  return Handle(
      CreateFileW(widePath(path).c_str(), access, kSharedByAll, nullptr, OPEN_EXISTING, kFolderToo, nullptr));
}

std::optional<FileStatus> statusOfHandle(HANDLE file) {
  SetLastError(NO_ERROR);
  const DWORD type = GetFileType(file);
  if (type == FILE_TYPE_UNKNOWN && GetLastError() != NO_ERROR) {
    takeSystemError();
    return std::nullopt;
  }
  FileStatus status;
  BY_HANDLE_FILE_INFORMATION information{};
  if (type != FILE_TYPE_DISK || GetFileInformationByHandle(file, &information) == 0) return status;
  const bool isFolder = (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  status.kind = isFolder ? FileStatus::Kind::kFolder : FileStatus::Kind::kPlain;
  status.volume = information.dwVolumeSerialNumber;
  status.number = (std::uint64_t{information.nFileIndexHigh} << 32U) | information.nFileIndexLow;
  return status;
}

// The C runtime's handle; a program without a console may have none.
HANDLE standardHandle(int number) {
  return reinterpret_cast<HANDLE>(_get_osfhandle(number));
}

Descriptor duplicate(HANDLE handle, Access access) {
  HANDLE copy = nullptr;
  const HANDLE process = GetCurrentProcess();
  const bool isDone = DuplicateHandle(process, handle, process, &copy, 0, FALSE, DUPLICATE_SAME_ACCESS) != 0;
  return descriptorOf(Handle(isDone ? copy : nullptr), access);
}

// The part of the file at which a call reads or writes, whatever its own place is.
OVERLAPPED at(std::uint64_t offset) {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32U);
  return place;
}

unsigned atOnce(std::size_t size) {
  return static_cast<unsigned>(std::min<std::size_t>(size, INT_MAX));
}

}  // namespace

std::optional<FileStatus> statusOf(const std::string& path) {
  const Handle file = openExisting(path, 0);
  if (file) return statusOfHandle(file.get());
  takeSystemError();
  return std::nullopt;
}

std::optional<FileStatus> statusOf(const Descriptor& file) {
  return statusOfHandle(handleOf(file));
}

std::optional<FileStatus> statusOfStandardOutput() {
  return statusOfHandle(standardHandle(kStandardOutput));
}

Descriptor openForReading(const std::string& path) {
  return descriptorOf(openExisting(path, GENERIC_READ), Access::kReading);
}

Descriptor openForAppending(const std::string& path, Contents contents) {
  Descriptor file = descriptorOf(Handle(CreateFileW(widePath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)),
                                 Access::kAppending);
  // Devices have nothing that could be dropped.
  if (file && contents == Contents::kDropped) static_cast<void>(cutFile(file, 0));
  return file;
}

std::FILE* openDevice(const std::string& path) {
  Descriptor file = descriptorOf(openExisting(path, GENERIC_WRITE), Access::kWriting);
  return streamOf(file, "wb");
}

Descriptor copyOfStandardInput() {
  return duplicate(standardHandle(kStandardInput), Access::kReading);
}

Descriptor copyOfStandardOutput() {
  return duplicate(standardHandle(kStandardOutput), Access::kAppending);
}

Descriptor copyOf(std::FILE* stream) {
  return duplicate(standardHandle(_fileno(stream)), Access::kWriting);
}

std::FILE* streamOf(Descriptor& file, const char* mode) {
  std::FILE* const stream = file ? _fdopen(file.get(), mode) : nullptr;
  if (stream != nullptr) static_cast<void>(file.release());
  return stream;
}

std::ptrdiff_t readFrom(const Descriptor& file, char* buffer, std::size_t size) {
  return _read(file.get(), buffer, atOnce(size));
}

std::ptrdiff_t writeTo(const Descriptor& file, std::string_view bytes) {
  return _write(file.get(), bytes.data(), atOnce(bytes.size()));
}

std::ptrdiff_t readAt(const Descriptor& file, std::uint64_t offset, char* buffer, std::size_t size) {
  OVERLAPPED place = at(offset);
  DWORD count = 0;
  if (ReadFile(handleOf(file), buffer, atOnce(size), &count, &place) != 0) return static_cast<int>(count);
  if (GetLastError() == ERROR_HANDLE_EOF) return 0;
  takeSystemError();
  return -1;
}

std::ptrdiff_t writeAt(const Descriptor& file, std::uint64_t offset, std::string_view bytes) {
  OVERLAPPED place = at(offset);
  DWORD count = 0;
  const bool isWritten = WriteFile(handleOf(file), bytes.data(), atOnce(bytes.size()), &count, &place) != 0;
  if (isWritten && (count > 0 || bytes.empty())) return static_cast<int>(count);
  // Nothing of it was taken.
  if (isWritten) SetLastError(ERROR_DISK_FULL);
  takeSystemError();
  return -1;
}

bool cutFile(const Descriptor& file, std::uint64_t size) {
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(size);
  const HANDLE handle = handleOf(file);
  if (SetFilePointerEx(handle, end, nullptr, FILE_BEGIN) != 0 && SetEndOfFile(handle) != 0) return true;
  takeSystemError();
  return false;
}

// What will be replaced must let itself be deleted, which a program that has it open may forbid.
bool isWritable(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(widePath(path).c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    errno = EACCES;
    return false;
  }
  const auto status = statusOf(path);
  const bool isPlain = status && status->kind == FileStatus::Kind::kPlain;
  if (openExisting(path, isPlain ? DELETE : GENERIC_WRITE)) return true;
  takeSystemError();
  return false;
}

bool isStandardOutputWritable() {
  return statusOfStandardOutput().has_value();
}

std::uint64_t positionOf(std::FILE* stream) {
  if (GetFileType(standardHandle(_fileno(stream))) != FILE_TYPE_DISK) return 0;
  const off64_t position = ftello64(stream);
  return position > 0 ? static_cast<std::uint64_t>(position) : 0;
}

// Files inherit from their folder who may do what with them.
unsigned newFilePermissions() {
  return 0;
}

bool setPermissions(const Descriptor& /*file*/, unsigned /*permissions*/) {
  return true;
}

bool isSynced(const Descriptor& file) {
  if (FlushFileBuffers(handleOf(file)) != 0) return true;
  const DWORD error = GetLastError();
  if (error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED) return true;
  takeSystemError();
  return false;
}

}  // namespace quillpress::cli
