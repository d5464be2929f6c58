#include <algorithm>
#include <cstring>
#include <utility>

#include "postscript/level3/streams/CcittFilter.h"

namespace quillpress::level3 {

namespace {

void paintBlack(std::vector<Byte>& row, int from, int to) {
  for (int x = from; x < to;) {
    if (x % 8 == 0 && to - x >= 8) {
      row[static_cast<std::size_t>(x / 8)] = 0xFF;
      x += 8;
    } else {
      row[static_cast<std::size_t>(x / 8)] |= static_cast<Byte>(0x80 >> (x % 8));
      ++x;
    }
  }
}

}  // namespace

std::size_t findReferenceChange(const CcittRow& reference, int a0, CcittColour colour, std::size_t from) {
  // A change with an even number is to black, away from white. A step back, because a vertical mode to the
  // left may have passed one.
  const std::size_t parity = colour == CcittColour::kWhite ? 0 : 1;
  std::size_t place = from >= 2 ? from - 2 : 0;
  if (place % 2 != parity) ++place;
  while (place + 2 < reference.size() && reference[place] <= a0) place += 2;
  return std::min(place, reference.size() - 1);
}

CcittDecoder::CcittDecoder(SourcePointer source, const CcittParameters& parameters, FilterClosing closing)
    : Decoder(std::move(source), closing),
      parameters_(parameters),
      // Above the first row everything is white.
      reference_(4, parameters.columns) {}

// One byte of the input; false when there is none.
bool CcittDecoder::fetch() {
  if (input_.empty()) return false;
  bits_ = bits_ << 8 | input_.front();
  bitCount_ += 8;
  input_ = input_.subspan(1);
  return true;
}

// The next `count` bits, with zeros for those that are not yet there.
unsigned CcittDecoder::knownBits(int count) const {
  const std::uint64_t known = bitCount_ == 0 ? 0 : bits_ & (~std::uint64_t{0} >> (64 - bitCount_));
  return static_cast<unsigned>(bitCount_ >= count ? known >> (bitCount_ - count)
                                                  : known << (count - bitCount_));
}

// Fetches no byte more than the code needs, so that what follows the last code stays unread.
CcittDecoder::Step CcittDecoder::match(const ccitt::Lookup& lookup, int& value) {
  for (;;) {
    const ccitt::Match& found = lookup.find(knownBits(ccitt::Lookup::kBits));
    if (found.length > 0 && found.length <= bitCount_) {
      drop(found.length);
      value = found.value;
      return Step::kDone;
    }
    if (bitCount_ >= ccitt::Lookup::kBits) return Step::kBad;
    if (!fetch()) return Step::kStarved;
  }
}

std::size_t CcittDecoder::deliver(std::span<Byte> output) {
  const std::size_t count = std::min(output.size(), row_.size() - delivered_);
  if (count > 0) std::memcpy(output.data(), row_.data() + delivered_, count);
  delivered_ += count;
  return count;
}

Decoder::Progress CcittDecoder::decode(Bytes input, std::span<Byte> output) {
  Progress step;
  input_ = input;
  while (isOpen()) {
    if (expects_ == Expects::kOutput) {
      step.produced += deliver(output.subspan(step.produced));
      if (delivered_ < row_.size()) break;
      endRow();
      continue;
    }
    const Step result = advance();
    if (result == Step::kStarved) break;
    if (result == Step::kBad) handleDamage();
  }
  step.consumed = input.size() - input_.size();
  input_ = {};
  return step;
}

CcittDecoder::Step CcittDecoder::advance() {
  switch (expects_) {
    case Expects::kRowStart:
      return startRow();
    case Expects::kTag:
      return takeTag();
    case Expects::kRow:
      return takeRowPart();
    case Expects::kEndOfLine:
      return resynchronise();
    case Expects::kOutput:
      break;
  }
  return Step::kDone;
}

// Ends of lines, fill bits, and what ends the data stand in front of a row.
CcittDecoder::Step CcittDecoder::startRow() {
  // With ends of line it is they that end at a whole byte.
  if (parameters_.encodedByteAlign && !parameters_.endOfLine && !isAligned_) drop(bitCount_ % 8);
  isAligned_ = true;
  const int zeros = ccitt::kEndOfLineBits - 1;
  for (;;) {
    // No row begins with eleven zeros.
    const unsigned bits = knownBits(zeros);
    const int known = std::min(bitCount_, zeros);
    if (known > 0 && bits >> (zeros - known) != 0) break;
    if (known == zeros) {
      if (bitCount_ == zeros && !fetch()) return Step::kStarved;
      drop(knownBits(ccitt::kEndOfLineBits) == 1 ? ccitt::kEndOfLineBits : 1);
      if ((bits_ >> bitCount_ & 1) == 1) return endOfLines();
      continue;
    }
    if (!fetch()) return Step::kStarved;
  }
  endOfLines_ = 0;
  expects_ = Expects::kRow;
  // Without ends of line the rows of mixed data are counted.
  is2D_ = parameters_.k < 0 || rowsTo1D_ > 0;
  return Step::kDone;
}

CcittDecoder::Step CcittDecoder::endOfLines() {
  ++endOfLines_;
  const int last = parameters_.k < 0 ? ccitt::kEndOfFacsimileBlock : ccitt::kReturnToControl;
  if (endOfLines_ == last && parameters_.endOfBlock) {
    // The last one of mixed data has a tag, too.
    if (parameters_.k > 0 && (bitCount_ > 0 || fetch())) drop(1);
    finish();
  } else if (parameters_.k > 0) {
    expects_ = Expects::kTag;
  }
  return Step::kDone;
}

// In mixed data a bit behind the end of line says how the next row is coded.
CcittDecoder::Step CcittDecoder::takeTag() {
  if (bitCount_ == 0 && !fetch()) return Step::kStarved;
  is2D_ = knownBits(1) == 0;
  drop(1);
  expects_ = Expects::kRow;
  return Step::kDone;
}

CcittDecoder::Step CcittDecoder::takeRowPart() {
  const Step result = isUncompressed_ ? takeUncompressed() : is2D_ && runsLeft_ == 0 ? takeMode() : takeRun();
  if (result == Step::kBad && !is2D_ && a0_ < 0 && run_ == 0 && knownBits(ccitt::kEndOfLineBits - 1) == 0) {
    // No row: another end of line.
    expects_ = Expects::kRowStart;
    return Step::kDone;
  }
  if (result == Step::kDone) endOfLines_ = 0;
  if (result == Step::kDone && a0_ >= parameters_.columns && runsLeft_ == 0 && !isUncompressed_) finishRow();
  return result;
}

CcittDecoder::Step CcittDecoder::takeMode() {
  int value = 0;
  const Step result = match(ccitt::modes(), value);
  return result == Step::kDone ? applyMode(static_cast<CcittMode>(value)) : result;
}

CcittDecoder::Step CcittDecoder::applyMode(CcittMode mode) {
  if (mode == CcittMode::kHorizontal) {
    runsLeft_ = 2;
    return Step::kDone;
  }
  if (mode == CcittMode::kUncompressed) {
    isUncompressed_ = true;
    a0_ = std::max(a0_, 0);
    return Step::kDone;
  }
  const std::size_t b1 = referencePlace_ = findReferenceChange(reference_, a0_, colour_, referencePlace_);
  if (mode == CcittMode::kPass) {
    a0_ = reference_[std::min(b1 + 1, reference_.size() - 1)];
    return Step::kDone;
  }
  static constexpr int kDistances[] = {0, 1, 2, 3, -1, -2, -3};
  const int distance = kDistances[static_cast<int>(mode) - static_cast<int>(CcittMode::kVertical0)];
  return addChange(reference_[b1] + distance) ? Step::kDone : Step::kBad;
}

// The colour changes at `place`. False when that cannot be.
bool CcittDecoder::addChange(int place) {
  const bool isPossible = place >= std::max(a0_, 0) && place <= parameters_.columns &&
                          current_.size() <= static_cast<std::size_t>(parameters_.columns) + 2;
  if (!isPossible) return false;
  current_.push_back(place);
  a0_ = place;
  colour_ = opposite(colour_);
  return true;
}

CcittDecoder::Step CcittDecoder::takeRun() {
  int length = 0;
  const Step result = match(ccitt::runs(colour_), length);
  if (result != Step::kDone) return result;
  run_ += length;
  if (run_ > parameters_.columns) return Step::kBad;
  if (length >= ccitt::kShortestMakeUp) return Step::kDone;
  if (!addChange(std::max(a0_, 0) + std::exchange(run_, 0))) return Step::kBad;
  if (runsLeft_ > 0) --runsLeft_;
  return Step::kDone;
}

// Up to five white pixels and a black one; more zeros end the mode, and then a bit gives the colour that
// follows.
CcittDecoder::Step CcittDecoder::takeUncompressed() {
  int zeros = 0;
  for (;; ++zeros) {
    if (zeros > 10) return Step::kBad;
    if (bitCount_ <= zeros && !fetch()) return Step::kStarved;
    if ((bits_ >> (bitCount_ - 1 - zeros) & 1) == 1) break;
  }
  const bool isEnd = zeros > 5;
  if (isEnd && bitCount_ <= zeros + 1 && !fetch()) return Step::kStarved;
  drop(zeros + 1);
  const int whites = isEnd ? zeros - 6 : zeros;
  if (whites > 0) {
    if (colour_ == CcittColour::kBlack && !addChange(a0_)) return Step::kBad;
    a0_ += whites;
  }
  if (a0_ > parameters_.columns) return Step::kBad;
  if (isEnd) {
    const CcittColour next = knownBits(1) == 1 ? CcittColour::kBlack : CcittColour::kWhite;
    drop(1);
    isUncompressed_ = false;
    return next == colour_ || addChange(a0_) ? Step::kDone : Step::kBad;
  }
  if (whites == 5) return Step::kDone;
  if (colour_ == CcittColour::kWhite && !addChange(a0_)) return Step::kBad;
  return ++a0_ <= parameters_.columns ? Step::kDone : Step::kBad;
}

void CcittDecoder::finishRow() {
  row_.assign(parameters_.rowBytes(), 0);
  current_.resize(std::max<std::size_t>(current_.size(), 1) + 3, parameters_.columns);
  for (std::size_t i = 0; i + 1 < current_.size(); i += 2) paintBlack(row_, current_[i], current_[i + 1]);
  if (!parameters_.blackIs1) {
    for (Byte& byte : row_) byte = static_cast<Byte>(~byte);
  }
  delivered_ = 0;
  expects_ = Expects::kOutput;
}

void CcittDecoder::endRow() {
  reference_.swap(current_);
  current_.clear();
  referencePlace_ = 0;
  a0_ = -1;
  colour_ = CcittColour::kWhite;
  runsLeft_ = run_ = 0;
  isUncompressed_ = isAligned_ = false;
  expects_ = Expects::kRowStart;
  rowsTo1D_ = is2D_ ? std::max(rowsTo1D_ - 1, 0) : std::max(parameters_.k, 1) - 1;
  ++rowsDone_;
  if (!parameters_.endOfBlock && parameters_.rows > 0 && rowsDone_ >= parameters_.rows) finish();
}

// A row that cannot be read is a copy of the one above, when that is allowed and the next one can be found.
void CcittDecoder::handleDamage() {
  if (parameters_.k < 0 || damaged_ >= parameters_.damagedRowsBeforeError) return fail();
  ++damaged_;
  expects_ = Expects::kEndOfLine;
}

CcittDecoder::Step CcittDecoder::resynchronise() {
  for (;;) {
    while (bitCount_ < ccitt::kEndOfLineBits) {
      if (!fetch()) return Step::kStarved;
    }
    if (knownBits(ccitt::kEndOfLineBits) == 1) break;
    drop(1);
  }
  current_ = reference_;
  finishRow();
  return Step::kDone;
}

// Data without a mark at its end is taken as far as it goes; a row that has only begun is not.
std::size_t CcittDecoder::decodeEnd(std::span<Byte> /*output*/) {
  finish();
  return 0;
}

}  // namespace quillpress::level3
