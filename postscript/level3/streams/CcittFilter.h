#pragma once

#include <vector>

#include "postscript/level3/streams/CcittCodes.h"
#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

struct CcittParameters {
  // The widest row; what a job claims beyond it has no use but to take memory.
  static constexpr int kMostColumns = 1 << 24;

  int k = 0;  // below 0: two-dimensional (Group 4), 0: one-dimensional, above: mixed (Group 3)
  bool endOfLine = false;
  bool encodedByteAlign = false;
  int columns = 1728;
  int rows = 0;  // 0: as many as come
  bool endOfBlock = true;
  bool blackIs1 = false;
  int damagedRowsBeforeError = 0;

  [[nodiscard]] std::size_t rowBytes() const { return (static_cast<std::size_t>(columns) + 7) / 8; }
};

// A row as the places where its colour changes, beginning with white; each run lies between two of them.
using CcittRow = std::vector<int>;

// The first change of `reference` to the right of `a0` that is away from `colour`, as an index; `from` is
// where the search may begin. The row ends in changes at its width, so there always is one.
std::size_t findReferenceChange(const CcittRow& reference, int a0, CcittColour colour, std::size_t from);

// Fax data of Group 3 and Group 4.
class CcittDecoder final : public Decoder {
 public:
  CcittDecoder(SourcePointer source, const CcittParameters& parameters,
               FilterClosing closing = FilterClosing::kFilterOnly);

  [[nodiscard]] const CcittParameters& parameters() const { return parameters_; }

 private:
  enum class Expects { kRowStart, kTag, kRow, kOutput, kEndOfLine };
  enum class Step { kDone, kStarved, kBad };

  Progress decode(Bytes input, std::span<Byte> output) override;
  std::size_t decodeEnd(std::span<Byte> output) override;
  std::size_t deliver(std::span<Byte> output);
  Step advance();
  Step startRow();
  Step takeTag();
  Step takeRowPart();
  Step takeMode();
  Step takeRun();
  Step takeUncompressed();
  Step resynchronise();
  Step applyMode(CcittMode mode);
  Step endOfLines();
  bool addChange(int place);
  void finishRow();
  void endRow();
  void handleDamage();

  bool fetch();
  [[nodiscard]] unsigned knownBits(int count) const;
  Step match(const ccitt::Lookup& lookup, int& value);
  void drop(int bits) { bitCount_ -= bits; }

  CcittParameters parameters_;
  Bytes input_;  // of the call that is running
  std::uint64_t bits_ = 0;
  int bitCount_ = 0;

  Expects expects_ = Expects::kRowStart;
  bool isAligned_ = false;
  int endOfLines_ = 0;
  int rowsDone_ = 0;
  int rowsTo1D_ = 0;  // rows of two dimensions until one of one, where nothing in the data says so
  int damaged_ = 0;

  CcittRow reference_;
  CcittRow current_;
  std::size_t referencePlace_ = 0;
  bool is2D_ = false;
  int a0_ = -1;
  CcittColour colour_ = CcittColour::kWhite;
  int runsLeft_ = 0;  // of horizontal mode
  int run_ = 0;       // so far, from make-up codes
  bool isUncompressed_ = false;

  std::vector<Byte> row_;
  std::size_t delivered_ = 0;  // of row_
};

class CcittEncoder final : public Encoder {
 public:
  CcittEncoder(SinkPointer target, const CcittParameters& parameters,
               FilterClosing closing = FilterClosing::kFilterOnly);

 private:
  void encode(Bytes bytes) override;
  void encodeEnd() override;
  void encodeRow();
  void encode1D();
  void encode2D();
  void putRun(CcittColour colour, int length);
  void put(std::string_view code);
  void putEndOfLine(bool next1D);
  void align(int bits);

  CcittParameters parameters_;
  std::vector<Byte> row_;
  CcittRow reference_;
  CcittRow current_;
  int rowsTo1D_ = 0;  // rows of two dimensions until one of one
  unsigned bits_ = 0;
  int bitCount_ = 0;
};

}  // namespace quillpress::level3
