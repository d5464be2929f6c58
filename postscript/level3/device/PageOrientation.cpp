#include "postscript/level3/device/PageOrientation.h"

#include <array>
#include <charconv>

namespace quillpress::level3 {

namespace {

constexpr int kPortrait = 0;
constexpr int kLandscape = 90;

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

// Nothing for (atend), too: by then the pages are written.
std::optional<int> orientationOf(std::string_view word) {
  if (word == "Portrait") return kPortrait;
  if (word == "Landscape") return kLandscape;
  return std::nullopt;
}

// The first four numbers of a matrix that turns by quarters.
std::optional<int> turnOf(std::string_view text) {
  std::array<int, 4> matrix{};
  for (int& number : matrix) {
    text = trimmed(text);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  }
  constexpr std::array<std::array<int, 4>, 4> kTurns{
      {{1, 0, 0, 1}, {0, 1, -1, 0}, {-1, 0, 0, -1}, {0, -1, 1, 0}}};
  for (std::size_t quarter = 0; quarter < kTurns.size(); ++quarter) {
    if (matrix == kTurns[quarter]) return static_cast<int>(quarter) * 90;
  }
  return std::nullopt;
}

}  // namespace

void PageOrientation::take(std::string_view comment) {
  if (comment.starts_with("%!PS-Adobe")) isStructured_ = true;
  if (!isStructured_ || !comment.starts_with("%%")) return;
  const std::size_t colon = comment.find(':');
  const std::string_view keyword = trimmed(comment.substr(2, colon - 2));
  const std::string_view value =
      colon == std::string_view::npos ? std::string_view() : trimmed(comment.substr(colon + 1));
  if (keyword == "BeginDocument") ++nesting_;
  if (keyword == "EndDocument" && nesting_ > 0) --nesting_;
  if (nesting_ > 0) return;
  if (keyword == "Page") {
    isPage_ = true;
    ofPage_.reset();
    asViewed_.reset();
  } else if (keyword == "Orientation" && !isPage_) {
    ofDocument_ = orientationOf(value);
  } else if (keyword == "PageOrientation") {
    (isPage_ ? ofPage_ : ofPages_) = orientationOf(value);
  } else if (keyword == "ViewingOrientation" && isPage_) {
    asViewed_ = turnOf(value);
  }
}

// A comment counts more than the text, of which a drawing may have most along its other axis; but only the
// text tells in which of its two directions a page is read.
std::optional<int> PageOrientation::angle(std::optional<int> textAngle, bool isPageWide) const {
  std::optional<int> said = asViewed_;
  for (const std::optional<int>& each : {ofPage_, ofPages_, ofDocument_}) {
    if (!said) said = each;
  }
  if (!said) return textAngle;
  const bool isAcross = textAngle && *textAngle % 180 != *said % 180;
  // Landscape already.
  if (said == kLandscape && !asViewed_ && isPageWide) return textAngle.value_or(kPortrait);
  // A matrix that turns the page upside down or the other way round is exact.
  const bool isExact = said != kPortrait && said != kLandscape;
  return !textAngle || isAcross || isExact ? said : textAngle;
}

}  // namespace quillpress::level3
