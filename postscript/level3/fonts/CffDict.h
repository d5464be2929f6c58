#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillpress::level3 {

// Operators of CFF's dictionaries; those of two bytes begin with 12.
enum class CffKey : std::uint16_t {
  kFontBBox = 5,
  kBlueValues = 6,
  kOtherBlues = 7,
  kFamilyBlues = 8,
  kFamilyOtherBlues = 9,
  kStdHW = 10,
  kStdVW = 11,
  kCharset = 15,
  kEncoding = 16,
  kCharStrings = 17,
  kPrivate = 18,
  kSubrs = 19,
  kDefaultWidthX = 20,
  kNominalWidthX = 21,
  kCharstringType = 0x0C06,
  kFontMatrix = 0x0C07,
  kBlueScale = 0x0C09,
  kBlueShift = 0x0C0A,
  kBlueFuzz = 0x0C0B,
  kStemSnapH = 0x0C0C,
  kStemSnapV = 0x0C0D,
  kForceBold = 0x0C0E,
  kLanguageGroup = 0x0C11,
  kExpansionFactor = 0x0C12,
  kRos = 0x0C1E,
  kCidCount = 0x0C22,
  kFdArray = 0x0C24,
  kFdSelect = 0x0C25,
};

// A dictionary that has been read. What is missing or has too few operands counts as not given.
class CffDict {
 public:
  CffDict() = default;
  explicit CffDict(std::string_view bytes);

  bool has(CffKey key) const { return entries_.contains(key); }
  double number(CffKey key, double otherwise) const;
  // A place or a length; 0 for what is none.
  std::size_t size(CffKey key, std::size_t index = 0) const;
  std::span<const double> numbers(CffKey key) const;
  // Of numbers that are each given as the distance from the one before.
  std::vector<double> sums(CffKey key) const;

 private:
  std::map<CffKey, std::vector<double>> entries_;
};

// Puts a dictionary together.
class CffDictWriter {
 public:
  CffDictWriter& number(CffKey key, double value) { return numbers(key, {&value, 1}); }
  CffDictWriter& numbers(CffKey key, std::span<const double> values);
  // Each as the distance from the one before; nothing when there are none.
  CffDictWriter& differences(CffKey key, std::span<const double> values);
  // Always 5 bytes long, so that places can be reckoned before they are known.
  CffDictWriter& places(CffKey key, std::initializer_list<std::size_t> values);

  const std::string& bytes() const { return bytes_; }

 private:
  void finish(CffKey key);

  std::string bytes_;
};

}  // namespace quillpress::level3
