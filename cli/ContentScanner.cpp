#include "cli/ContentScanner.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "cli/InlineImage.h"
#include "cli/TextScan.h"

namespace quillpress::cli {

namespace {

/** The bytes with which a mark can begin. Nearly all content text is numbers, which hold none of them. */
constexpr std::array<bool, 256> kMayBegin = [] {
  std::array<bool, 256> table{};
  for (const unsigned char byte : {'q', 'Q', '/', 'B'}) table[byte] = true;
  return table;
}();

bool mayBegin(char byte) {
  return kMayBegin[static_cast<unsigned char>(byte)];
}

bool isTokenEnd(std::string_view text, std::size_t at) {
  return at >= text.size() || isWhite(text[at]);
}

}  // namespace

bool ContentScanner::next(std::size_t limit, ContentMark& mark) {
  limit = std::min(limit, text_.size());
  while (at_ < limit) {
    const char* const begin = text_.data() + at_;
    const char* const found = std::find_if(begin, text_.data() + limit, mayBegin);
    at_ += static_cast<std::size_t>(found - begin);
    if (at_ == limit) return false;
    if (markAt(at_, mark)) {
      at_ = mark.end;
      return true;
    }
    ++at_;
  }
  return false;
}

bool ContentScanner::markAt(std::size_t at, ContentMark& mark) const {
  if (at > 0 && !isWhite(text_[at - 1])) return false;
  if (text_[at] == '/') return objectAt(at, mark);
  mark = {ContentMark::Kind::Save, at, at + 1, 0};
  if (text_[at] == 'Q') mark.kind = ContentMark::Kind::Restore;
  if (text_[at] != 'B') return isTokenEnd(text_, at + 1);
  if (text_.substr(at, 2) != "BI" || !isTokenEnd(text_, at + 2)) return false;
  mark = {ContentMark::Kind::InlineImage, at, at + inlineImageLength(text_.substr(at)), 0};
  return true;
}

/** Recognises /PSI and /PA with a number behind them, the names that the converter gives to objects. */
bool ContentScanner::objectAt(std::size_t at, ContentMark& mark) const {
  std::string_view name = text_.substr(at + 1);
  if (name.starts_with("PSI")) {
    name.remove_prefix(3);
  } else if (name.starts_with("PA")) {
    name.remove_prefix(2);
  } else {
    return false;
  }
  unsigned number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc()) return false;
  mark = {ContentMark::Kind::Object, at, static_cast<std::size_t>(end - text_.data()), number};
  return isTokenEnd(text_, mark.end);
}

}  // namespace quillpress::cli
