#include "cli/base/PagePattern.h"

namespace quillpress::cli {

namespace {

// Where the number goes, as printf writes it: "%d", "%3d", "%03d".
struct Place {
  std::size_t begin;
  std::size_t end;
  std::size_t width = 0;
  char filler = ' ';
};

// What the `%` at `begin` begins, if it is a place.
std::optional<Place> placeAt(std::string_view name, std::size_t begin) {
  Place place{begin, begin + 1};
  const auto next = [&] { return place.end < name.size() ? name[place.end] : '\0'; };
  if (next() == '0') {
    place.filler = '0';
    ++place.end;
  }
  // More digits than nine no count of pages has.
  if (next() >= '1' && next() <= '9') place.width = static_cast<std::size_t>(name[place.end++] - '0');
  if (next() != 'd') return std::nullopt;
  ++place.end;
  return place;
}

std::optional<Place> findPlace(std::string_view name) {
  for (std::size_t i = name.find('%'); i != std::string_view::npos; i = name.find('%', i + 1)) {
    if (const std::optional<Place> place = placeAt(name, i)) return place;
  }
  return std::nullopt;
}

}  // namespace

std::optional<PagePattern> PagePattern::parse(std::string_view name) {
  const std::optional<Place> place = findPlace(name);
  if (!place || findPlace(name.substr(place->end))) return std::nullopt;
  PagePattern pattern;
  pattern.before_ = name.substr(0, place->begin);
  pattern.behind_ = name.substr(place->end);
  pattern.filler_ = place->filler;
  pattern.width_ = place->width;
  return pattern;
}

std::string PagePattern::nameOf(std::uint64_t page) const {
  std::string number = std::to_string(page);
  if (number.size() < width_) number.insert(0, width_ - number.size(), filler_);
  return before_ + number + behind_;
}

}  // namespace quillpress::cli
