#include "postscript/level3/document/JobSource.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "postscript/level3/streams/CharacterClass.h"

namespace quillpress::level3 {

namespace {

constexpr std::array<Byte, 4> kEpsHeader{0xC5, 0xD0, 0xD3, 0xC6};
constexpr std::string_view kUniversalExit = "\x1B%-12345X";
constexpr Byte kEndOfFile = 0x04;
constexpr std::size_t kBlock = 64UL * 1024;

std::uint32_t littleEndian(const std::vector<Byte>& bytes, std::size_t place) {
  std::uint32_t value = 0;
  for (std::size_t index = 4; index-- > 0;) value = value << 8 | bytes[place + index];
  return value;
}

}  // namespace

JobSource::JobSource(SourcePointer inner, Observer observer)
    : inner_(std::move(inner)), observer_(std::move(observer)) {}

std::uint64_t JobSource::reached() const {
  std::uint64_t place = std::min(position(), length_);
  const bool isBuffered = place > presentStart_ && place - presentStart_ <= present_.size();
  if (isBuffered && isWhiteSpace(present_[static_cast<std::size_t>(place - presentStart_) - 1])) --place;
  return start_ + place;
}

// False when there is nothing more.
bool JobSource::fill(std::vector<Byte>& block) {
  block.clear();
  while (block.size() < kBlock && left_ > 0 && inner_->refill()) {
    const Bytes bytes = inner_->peek();
    const std::size_t count =
        static_cast<std::size_t>(std::min<std::uint64_t>({bytes.size(), kBlock - block.size(), left_}));
    block.insert(block.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    inner_->consume(count);
    left_ -= count;
    // An interactive source gives what it has.
    if (!inner_->available()) break;
  }
  isUnreadable_ = isUnreadable_ || inner_->hasFailed();
  return !block.empty();
}

// What stands before the PostScript at the beginning of the first block.
void JobSource::skipWrapping() {
  std::size_t skipped = 0;
  if (ahead_.size() >= 12 && std::equal(kEpsHeader.begin(), kEpsHeader.end(), ahead_.begin())) {
    const std::uint32_t offset = littleEndian(ahead_, 4);
    const std::uint32_t length = littleEndian(ahead_, 8);
    // Pictures for screens stand behind the PostScript as a rule; one before it must fit into the first
    // block.
    if (offset < ahead_.size()) {
      skipped = offset;
      const std::size_t rest = ahead_.size() - skipped;
      if (rest > length) ahead_.resize(skipped + length);
      left_ = length > rest ? length - rest : 0;
    }
  } else if (!ahead_.empty() && (ahead_[0] == 0x1B || ahead_[0] == kEndOfFile)) {
    const std::string_view text = textOf(Bytes(ahead_));
    const std::size_t begin = text.find("%!");
    if (begin != std::string_view::npos) skipped = begin;
  }
  start_ = skipped;
  ahead_.erase(ahead_.begin(), ahead_.begin() + static_cast<std::ptrdiff_t>(skipped));
}

Bytes JobSource::nextBlock() {
  if (!hasBegun_) {
    hasBegun_ = true;
    fill(ahead_);
    skipWrapping();
  }
  if (isOver_) return {};
  presentStart_ += present_.size();
  present_.swap(ahead_);
  if (!fill(ahead_)) isOver_ = true;
  const std::string_view text = textOf(Bytes(present_));
  // The command that ends a printer language's job ends ours.
  for (std::size_t exit = text.find(kUniversalExit); exit != std::string_view::npos;
       exit = text.find(kUniversalExit, exit + 1)) {
    const bool endsLine =
        exit == 0 || text[exit - 1] == '\n' || text[exit - 1] == '\r' || text[exit - 1] == '\x04';
    if (!endsLine) continue;
    present_.resize(exit);
    isOver_ = true;
    break;
  }
  if (isOver_) {
    while (!present_.empty() &&
           (present_.back() == kEndOfFile || present_.back() == '\r' || present_.back() == '\n')) {
      present_.pop_back();
    }
    length_ += present_.size();
    // The line end that the last token may need.
    if (!present_.empty()) present_.push_back('\n');
  } else {
    length_ += present_.size();
  }
  comments_.scan(textOf(Bytes(present_)));
  if (observer_) observer_();
  return Bytes(present_);
}

}  // namespace quillpress::level3
