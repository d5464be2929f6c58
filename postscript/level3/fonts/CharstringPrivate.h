#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillpress::level3 {

// What a Private dictionary says: hints for all glyphs, subroutines, and how its charstrings are written.
struct CharstringPrivate {
  std::vector<double> blueValues;
  std::vector<double> otherBlues;
  std::vector<double> familyBlues;
  std::vector<double> familyOtherBlues;
  std::vector<double> stdHW;  // none or one
  std::vector<double> stdVW;
  std::vector<double> stemSnapH;
  std::vector<double> stemSnapV;
  double blueScale = 0.039625;
  double blueShift = 7;
  double blueFuzz = 1;
  double expansionFactor = 0.06;
  int languageGroup = 0;
  bool forceBold = false;

  // Of Type 2 charstrings only.
  double defaultWidthX = 0;
  double nominalWidthX = 0;

  // 1 or 2: the language of charstrings and subroutines.
  int charstringType = 1;
  // Random bytes in front of each encrypted charstring and subroutine; -1 when they are not encrypted.
  int lenIV = 4;
  // By their number; those that are missing are empty.
  std::vector<std::string> subrs;
};

}  // namespace quillpress::level3
