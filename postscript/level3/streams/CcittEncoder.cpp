#include <algorithm>
#include <array>

#include "postscript/level3/streams/CcittFilter.h"

namespace quillpress::level3 {

namespace {

// The changes of a row of `columns` pixels, black ones, with changes at its width behind them.
CcittRow changesOf(Bytes row, int columns) {
  CcittRow changes;
  bool isBlack = false;
  for (int x = 0; x < columns; ++x) {
    const Byte byte = row[static_cast<std::size_t>(x / 8)];
    // Eight pixels of the colour that it is anyway.
    if (x % 8 == 0 && byte == (isBlack ? 0xFF : 0x00)) {
      x += 7;
      continue;
    }
    const bool black = (byte >> (7 - x % 8) & 1) == 1;
    if (black == isBlack) continue;
    changes.push_back(x);
    isBlack = black;
  }
  changes.resize(changes.size() + 4, columns);
  return changes;
}

CcittMode verticalMode(int distance) {
  static constexpr std::array<CcittMode, 7> kModes = {CcittMode::kVerticalLeft3,  CcittMode::kVerticalLeft2,
                                                      CcittMode::kVerticalLeft1,  CcittMode::kVertical0,
                                                      CcittMode::kVerticalRight1, CcittMode::kVerticalRight2,
                                                      CcittMode::kVerticalRight3};
  const int place = distance + 3;
  return kModes[static_cast<std::size_t>(place)];
}

}  // namespace

CcittEncoder::CcittEncoder(SinkPointer target, const CcittParameters& parameters, FilterClosing closing)
    : Encoder(std::move(target), closing), parameters_(parameters), reference_(4, parameters.columns) {}

void CcittEncoder::put(std::string_view code) {
  for (const char digit : code) {
    bits_ = bits_ << 1 | (digit == '1' ? 1U : 0U);
    if (++bitCount_ < 8) continue;
    emit(static_cast<Byte>(bits_));
    bitCount_ = 0;
  }
}

// Fills up with zeros until `bits` more end at a whole byte.
void CcittEncoder::align(int bits) {
  while ((bitCount_ + bits) % 8 != 0) put("0");
}

void CcittEncoder::putEndOfLine(bool next1D) {
  put(ccitt::kEndOfLine);
  if (parameters_.k > 0) put(next1D ? "1" : "0");
}

void CcittEncoder::encode(Bytes bytes) {
  const std::size_t size = parameters_.rowBytes();
  while (!bytes.empty() && isOpen()) {
    const std::size_t count = std::min(bytes.size(), size - row_.size());
    row_.insert(row_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    bytes = bytes.subspan(count);
    if (row_.size() == size) encodeRow();
  }
}

void CcittEncoder::encodeRow() {
  if (!parameters_.blackIs1) {
    for (Byte& byte : row_) byte = static_cast<Byte>(~byte);
  }
  current_ = changesOf(row_, parameters_.columns);
  row_.clear();
  const bool is1D = parameters_.k == 0 || (parameters_.k > 0 && rowsTo1D_ == 0);
  if (parameters_.encodedByteAlign) align(parameters_.endOfLine ? ccitt::kEndOfLineBits : 0);
  if (parameters_.endOfLine) putEndOfLine(is1D);
  if (is1D) {
    encode1D();
    rowsTo1D_ = parameters_.k;
  } else {
    encode2D();
  }
  if (parameters_.k > 0) --rowsTo1D_;
  reference_.swap(current_);
}

void CcittEncoder::putRun(CcittColour colour, int length) {
  while (length > ccitt::kLongestMakeUp) {
    put(ccitt::runCode(colour, ccitt::kLongestMakeUp));
    length -= ccitt::kLongestMakeUp;
  }
  const int rest = length % ccitt::kShortestMakeUp;
  if (length != rest) put(ccitt::runCode(colour, length - rest));
  put(ccitt::runCode(colour, rest));
}

void CcittEncoder::encode1D() {
  int place = 0;
  CcittColour colour = CcittColour::kWhite;
  for (std::size_t i = 0; place < parameters_.columns; ++i) {
    putRun(colour, current_[i] - place);
    place = current_[i];
    colour = opposite(colour);
  }
}

void CcittEncoder::encode2D() {
  int a0 = -1;
  CcittColour colour = CcittColour::kWhite;
  std::size_t next = 0;  // change of the current row
  std::size_t place = 0;
  while (a0 < parameters_.columns) {
    place = findReferenceChange(reference_, a0, colour, place);
    const int a1 = current_[next];
    const int b1 = reference_[place];
    const int b2 = reference_[std::min(place + 1, reference_.size() - 1)];
    if (b2 < a1) {
      put(ccitt::modeCode(CcittMode::kPass));
      a0 = b2;
    } else if (std::abs(a1 - b1) <= 3) {
      put(ccitt::modeCode(verticalMode(a1 - b1)));
      a0 = a1;
      colour = opposite(colour);
      ++next;
    } else {
      const int a2 = current_[next + 1];
      put(ccitt::modeCode(CcittMode::kHorizontal));
      putRun(colour, a1 - std::max(a0, 0));
      putRun(opposite(colour), a2 - a1);
      a0 = a2;
      next += 2;
    }
  }
}

// A row that has only begun is filled up with white.
void CcittEncoder::encodeEnd() {
  if (!row_.empty()) {
    row_.resize(parameters_.rowBytes(), parameters_.blackIs1 ? 0x00 : 0xFF);
    encodeRow();
  }
  if (parameters_.endOfBlock) {
    if (parameters_.encodedByteAlign) align(parameters_.endOfLine ? ccitt::kEndOfLineBits : 0);
    const int count = parameters_.k < 0 ? ccitt::kEndOfFacsimileBlock : ccitt::kReturnToControl;
    for (int i = 0; i < count; ++i) putEndOfLine(true);
  }
  align(0);
}

}  // namespace quillpress::level3
