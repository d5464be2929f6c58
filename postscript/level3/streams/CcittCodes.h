#pragma once

#include <string_view>
#include <vector>

#include "postscript/level3/streams/Stream.h"

namespace quillpress::level3 {

enum class CcittColour { kWhite = 0, kBlack = 1 };

constexpr CcittColour opposite(CcittColour colour) {
  return colour == CcittColour::kWhite ? CcittColour::kBlack : CcittColour::kWhite;
}

// How two-dimensional coding goes on from a changing element.
enum class CcittMode {
  kPass,
  kHorizontal,
  kVertical0,
  kVerticalRight1,
  kVerticalRight2,
  kVerticalRight3,
  kVerticalLeft1,
  kVerticalLeft2,
  kVerticalLeft3,
  kUncompressed,
};

// Codes of ITU-T T.4 and T.6, as texts of ones and zeros.
namespace ccitt {

inline constexpr int kShortestMakeUp = 64;
inline constexpr int kLongestMakeUp = 2560;
inline constexpr std::string_view kEndOfLine = "000000000001";
inline constexpr int kEndOfLineBits = static_cast<int>(kEndOfLine.size());
// Six ends of line in a row end the data of Group 3, two that of Group 4.
inline constexpr int kReturnToControl = 6;
inline constexpr int kEndOfFacsimileBlock = 2;

// The code of a run of up to 63 pixels, or of a multiple of 64 up to kLongestMakeUp.
std::string_view runCode(CcittColour colour, int run);

std::string_view modeCode(CcittMode mode);

// What a code that begins with given bits stands for.
struct Match {
  int length = 0;  // of the code; 0: there is none
  int value = 0;
};

// Finds codes by looking at as many bits as the longest one has.
class Lookup {
 public:
  void add(std::string_view code, int value);

  // `bits` has kBits bits, those that are not yet known as zeros. A match that is longer than what is known
  // is none.
  [[nodiscard]] const Match& find(unsigned bits) const { return matches_[bits]; }

  static constexpr int kBits = 13;

 private:
  std::vector<Match> matches_ = std::vector<Match>(1U << kBits);
};

const Lookup& runs(CcittColour colour);
const Lookup& modes();

}  // namespace ccitt

}  // namespace quillpress::level3
