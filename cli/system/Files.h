#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "cli/system/Descriptor.h"

namespace quillpress::cli {

// Files by their descriptors. What fails leaves its reason in errno. Descriptors that are made here are not
// for programs that this one starts.

struct FileStatus {
  enum class Kind { kPlain, kFolder, kOther };  // others are devices, pipes and such

  Kind kind = Kind::kOther;
  unsigned permissions = 0;
  // Together they tell one file from all others.
  std::uint64_t volume = 0;
  std::uint64_t number = 0;

  [[nodiscard]] bool isSameFileAs(const FileStatus& other) const {
    return volume == other.volume && number == other.number;
  }
};

// Empty when there is no such file. Links are followed.
std::optional<FileStatus> statusOf(const std::string& path);
std::optional<FileStatus> statusOf(const Descriptor& file);
std::optional<FileStatus> statusOfStandardOutput();

// Folders can be opened, too.
Descriptor openForReading(const std::string& path);

// Makes the file when it is missing. All that is written goes to its end.
enum class Contents { kKept, kDropped };
Descriptor openForAppending(const std::string& path, Contents contents);

// A device or a pipe, as a stream for writing; null when that fails.
std::FILE* openDevice(const std::string& path);

// Further descriptors of what is open already.
Descriptor copyOfStandardInput();
Descriptor copyOfStandardOutput();
Descriptor copyOf(std::FILE* stream);

// The stream takes the descriptor over; null when that fails. `mode` as for fopen, binary.
std::FILE* streamOf(Descriptor& file, const char* mode);

// How many bytes have been read or written; negative when that fails. 0 read bytes are the end.
std::ptrdiff_t readFrom(const Descriptor& file, char* buffer, std::size_t size);
std::ptrdiff_t writeTo(const Descriptor& file, std::string_view bytes);

// The same at a place of its own, so that others may read and write elsewhere meanwhile.
std::ptrdiff_t readAt(const Descriptor& file, std::uint64_t offset, char* buffer, std::size_t size);
std::ptrdiff_t writeAt(const Descriptor& file, std::uint64_t offset, std::string_view bytes);

// False when the file keeps its length.
bool cutFile(const Descriptor& file, std::uint64_t size);

// Whether the file at `path`, which exists, may be written.
bool isWritable(const std::string& path);
bool isStandardOutputWritable();

// Where the stream stands; 0 where that cannot be told, as in a pipe.
std::uint64_t positionOf(std::FILE* stream);

// What new files get. REQUIRES: no other thread makes files.
unsigned newFilePermissions();
// False on file systems that keep none.
bool setPermissions(const Descriptor& file, unsigned permissions);

// Whether the file is on the disk, as far as its file system can promise that at all.
bool isSynced(const Descriptor& file);

}  // namespace quillpress::cli
