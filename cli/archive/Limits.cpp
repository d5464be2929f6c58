#include "cli/archive/Limits.h"

#include <cmath>
#include <cstddef>
#include <limits>

#include "cli/base/Errors.h"

namespace quillpress::cli {

void checkName(const std::string& name) {
  constexpr std::size_t kLongest = 127;
  if (name.size() > kLongest + 1) throw ArchiveError("the name " + name.substr(1) + ", which is too long");
}

void checkString(const std::string& bytes, ArchivePart part) {
  const std::size_t longest = part == ArchivePart::k1b ? 65535 : 32767;
  if (bytes.size() > longest) throw ArchiveError("a string of " + std::to_string(bytes.size()) + " bytes");
}

void checkInteger(const std::string& digits) {
  // Also when no integer of ours holds it.
  if (!isInteger(std::stod(digits))) throw ArchiveError("the number " + digits);
}

bool isInteger(double whole) {
  using Limits = std::numeric_limits<int>;
  return whole >= static_cast<double>(Limits::min()) && whole <= static_cast<double>(Limits::max());
}

bool isTooLarge(double value, ArchivePart part) {
  constexpr double kMostOfPdf14 = 32767;
  const double most =
      part == ArchivePart::k1b ? kMostOfPdf14 : static_cast<double>(std::numeric_limits<float>::max());
  return !(std::abs(value) <= most);
}

void checkLimits(QPDFObjectHandle value, ArchivePart part) {
  constexpr int kLongestArray = 8191;
  constexpr std::size_t kLargestDictionary = 4095;
  if (value.isName()) {
    checkName(value.getName());
  } else if (value.isString()) {
    checkString(value.getStringValue(), part);
  } else if (value.isInteger()) {
    checkInteger(std::to_string(value.getIntValue()));
  } else if (value.isReal() && isTooLarge(value.getNumericValue(), part)) {
    throw ArchiveError("the number " + value.getRealValue());
  } else if (part == ArchivePart::k1b && value.isArray() && value.getArrayNItems() > kLongestArray) {
    throw ArchiveError("an array of " + std::to_string(value.getArrayNItems()) + " elements");
  } else if (part == ArchivePart::k1b && value.isDictionary() &&
             value.getKeys().size() > kLargestDictionary) {
    throw ArchiveError("a dictionary of " + std::to_string(value.getKeys().size()) + " entries");
  }
}

}  // namespace quillpress::cli
