#include "cli/job/DscScanner.h"

#include <algorithm>
#include <charconv>

#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

constexpr std::string_view kLineEnds = "\r\n";
// Structuring comments are at most 255 bytes long; anything far beyond is read as if it ended here.
constexpr std::size_t kLongestComment = 4096;

bool isLineEnd(char byte) {
  return byte == '\r' || byte == '\n';
}

std::uint64_t parseCount(std::string_view word) {
  std::uint64_t count = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
  return error == std::errc() && end == word.data() + word.size() ? count : 0;
}

}  // namespace

void DscScanner::write(std::string_view bytes, std::uint64_t offset) {
  const std::size_t taken = held_.empty() ? 0 : takeHeld(bytes);
  if (taken < bytes.size()) scan(bytes.substr(taken), offset + taken);
}

void DscScanner::finish() {
  if (!held_.empty()) passHeld();
  handler_.endOfJob();
}

// Completes the held line from the next block; returns how much of the block that took.
std::size_t DscScanner::takeHeld(std::string_view bytes) {
  const std::size_t end = std::min(bytes.find_first_of(kLineEnds), bytes.size());
  held_.append(bytes.substr(0, end));
  // The line end itself stays in the block: it is passed on with what follows.
  if (end < bytes.size() || held_.size() > kLongestComment) passHeld();
  return end;
}

void DscScanner::passHeld() {
  // The handler may bring about more text, so nothing is held while it runs.
  const std::string line = std::move(held_);
  held_.clear();
  lastByte_ = line.back();
  takeComment(line);
  handler_.text(line, heldOffset_);
}

void DscScanner::scan(std::string_view bytes, std::uint64_t offset) {
  blockOffset_ = offset;
  passed_ = 0;
  std::size_t at = 0;
  while (at < bytes.size()) {
    switch (state_) {
      case State::kLines:
        at = scanLines(bytes, at);
        break;
      case State::kDataLineEnd:
        at = skipDataLineEnd(bytes, at);
        break;
      case State::kDataBytes:
        at = skipDataBytes(bytes, at);
        break;
      case State::kDataLines:
        at = skipDataLines(bytes, at);
        break;
    }
  }
  // What begins a comment is held back: its text must come after the comment is known.
  passUpTo(bytes, bytes.size() - held_.size());
  lastByte_ = bytes.back();
}

// Looks for one comment; returns the end of its line, or of the block.
std::size_t DscScanner::scanLines(std::string_view bytes, std::size_t from) {
  std::size_t at = bytes.find('%', from);
  // Most lines have no sign at all, and one search goes over all of them.
  while (at != std::string_view::npos && !mayBeginComment(bytes, at)) at = bytes.find('%', at + 1);
  if (at == std::string_view::npos) return bytes.size();
  passUpTo(bytes, at);
  const std::size_t end = bytes.find_first_of(kLineEnds, at);
  if (end == std::string_view::npos) {
    held_ = bytes.substr(at);
    heldOffset_ = blockOffset_ + at;
    return bytes.size();
  }
  takeComment(bytes.substr(at, end - at));
  return end;
}

// Whether a per cent sign stands at the start of a line and another one follows it or may follow.
bool DscScanner::mayBeginComment(std::string_view bytes, std::size_t at) const {
  if (!isLineEnd(at == 0 ? lastByte_ : bytes[at - 1])) return false;
  // At the end of a block the second sign may still come.
  return at + 1 == bytes.size() || bytes[at + 1] == '%';
}

std::size_t DscScanner::skipDataLineEnd(std::string_view bytes, std::size_t from) {
  // A carriage return and the line feed behind it are one line end, also with a block's border between.
  const bool returnCame = (from == 0 ? lastByte_ : bytes[from - 1]) == '\r';
  if (bytes[from] == '\r' && !returnCame) return from + 1;
  state_ = dataKind_;
  return bytes[from] == '\n' ? from + 1 : from;
}

std::size_t DscScanner::skipDataBytes(std::string_view bytes, std::size_t from) {
  const auto skipped = static_cast<std::size_t>(std::min<std::uint64_t>(dataLeft_, bytes.size() - from));
  dataLeft_ -= skipped;
  if (dataLeft_ == 0) state_ = State::kLines;
  return from + skipped;
}

std::size_t DscScanner::skipDataLines(std::string_view bytes, std::size_t from) {
  const std::size_t end = bytes.find_first_of(kLineEnds, from);
  if (end == std::string_view::npos) return bytes.size();
  const bool returnCame = (end == 0 ? lastByte_ : bytes[end - 1]) == '\r';
  const bool isSecondHalf = bytes[end] == '\n' && returnCame;
  // The line feed of a pair has been counted with its carriage return.
  if (!isSecondHalf) --dataLeft_;
  if (dataLeft_ == 0) state_ = State::kLines;
  return end + 1;
}

// Hands the handler what it has not had yet of the block's first `end` bytes.
void DscScanner::passUpTo(std::string_view bytes, std::size_t end) {
  if (end > passed_) handler_.text(bytes.substr(passed_, end - passed_), blockOffset_ + passed_);
  passed_ = std::max(passed_, end);
}

void DscScanner::takeComment(std::string_view line) {
  if (!line.starts_with("%%")) return;
  line.remove_prefix(2);
  const std::size_t keywordEnd = std::min(line.find_first_of(": \t"), line.size());
  const std::string_view keyword = line.substr(0, keywordEnd);
  line.remove_prefix(std::min(keywordEnd + 1, line.size()));
  const std::string_view value = trimmed(line);
  if (keyword == "BeginBinary" || keyword == "BeginData") return beginData(value);
  if (keyword == "BeginDocument") {
    ++documentDepth_;
  } else if (keyword == "EndDocument") {
    if (documentDepth_ > 0) --documentDepth_;
  } else if (documentDepth_ == 0) {
    handler_.comment(keyword, value);
  }
}

// `value` is "COUNT", or "COUNT KIND Bytes" or "COUNT KIND Lines" of %%BeginData.
void DscScanner::beginData(std::string_view value) {
  dataLeft_ = parseCount(takeWord(value));
  // Without a sensible count the data is read as text, which at worst shows a comment too many.
  if (dataLeft_ == 0) return;
  takeWord(value);
  dataKind_ = takeWord(value) == "Lines" ? State::kDataLines : State::kDataBytes;
  state_ = State::kDataLineEnd;
}

}  // namespace quillpress::cli
