#include "postscript/level3/streams/FileStreams.h"

#include <limits>

namespace quillpress::level3 {

namespace {

constexpr std::size_t kBlockSize = 65536;

#ifdef _WIN32
bool moveInFile(std::FILE* file, std::uint64_t position, int origin) {
  return _fseeki64(file, static_cast<long long>(position), origin) == 0;
}
long long placeInFile(std::FILE* file) {
  return _ftelli64(file);
}
#else
bool moveInFile(std::FILE* file, std::uint64_t position, int origin) {
  return fseeko(file, static_cast<off_t>(position), origin) == 0;
}
long long placeInFile(std::FILE* file) {
  return ftello(file);
}
#endif

// The length of a file that can be moved in and stands at its start; it stands there afterwards, too.
std::optional<std::uint64_t> lengthOf(std::FILE* file) {
  if (placeInFile(file) != 0 || !moveInFile(file, 0, SEEK_END)) return std::nullopt;
  const long long length = placeInFile(file);
  if (!moveInFile(file, 0, SEEK_SET) || length < 0) return std::nullopt;
  return static_cast<std::uint64_t>(length);
}

}  // namespace

void FileCloser::operator()(std::FILE* file) const {
  if (ownership == FileOwnership::kOwned) std::fclose(file);
}

FileHandle openFile(const std::filesystem::path& path, const char* mode) {
#ifdef _WIN32
  FileHandle file(_wfopen(path.c_str(), std::filesystem::path(mode).c_str()));
#else
  FileHandle file(std::fopen(path.c_str(), mode));
#endif
  if (file) std::setvbuf(file.get(), nullptr, _IONBF, 0);
  return file;
}

FileHandle borrowFile(std::FILE* file) {
  return FileHandle(file, FileCloser{FileOwnership::kBorrowed});
}

FileSource::FileSource(FileHandle file)
    : file_(std::move(file)), length_(lengthOf(file_.get())), block_(kBlockSize) {}

std::optional<std::uint64_t> FileSource::available() const {
  if (!length_ || isClosed()) return ByteSource::available();
  return *length_ > position() ? *length_ - position() : 0;
}

Bytes FileSource::nextBlock() {
  const std::size_t count = std::fread(block_.data(), 1, block_.size(), file_.get());
  if (count < block_.size() && std::ferror(file_.get()) != 0) fail();
  return Bytes(block_).first(count);
}

bool FileSource::moveTo(std::uint64_t position) {
  if (position > *length_) return false;
  std::clearerr(file_.get());
  return moveInFile(file_.get(), position, SEEK_SET);
}

FileSink::FileSink(FileHandle file) : file_(std::move(file)) {
  block_.reserve(kBlockSize);
}

void FileSink::writeOut(Bytes bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) fail();
}

void FileSink::take(Bytes bytes) {
  if (block_.size() + bytes.size() > kBlockSize) {
    writeOut(block_);
    block_.clear();
  }
  if (bytes.size() >= kBlockSize) {
    writeOut(bytes);
  } else {
    block_.insert(block_.end(), bytes.begin(), bytes.end());
  }
}

void FileSink::handOn() {
  writeOut(block_);
  block_.clear();
  if (std::fflush(file_.get()) != 0) fail();
}

void FileSink::release() {
  if (isOpen()) handOn();
  const bool owned = file_.get_deleter().ownership == FileOwnership::kOwned;
  std::FILE* file = file_.release();
  if (owned && std::fclose(file) != 0) fail();
}

bool FileSink::moveTo(std::uint64_t position) {
  handOn();
  return isOpen() && position <= std::numeric_limits<std::int64_t>::max() &&
         moveInFile(file_.get(), position, SEEK_SET);
}

}  // namespace quillpress::level3
