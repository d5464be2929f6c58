#include "cli/base/Media.h"

#include <array>
#include <charconv>

#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

struct NamedSize {
  std::string_view name;
  double width;  // points, rounded as printer descriptions round them
  double height;
};

constexpr std::array kNamedSizes{
    NamedSize{"A0", 2384, 3370},    NamedSize{"A1", 1684, 2384},      NamedSize{"A2", 1191, 1684},
    NamedSize{"A3", 842, 1191},     NamedSize{"A4", 595, 842},        NamedSize{"A5", 420, 595},
    NamedSize{"A6", 298, 420},      NamedSize{"B4", 729, 1032},       NamedSize{"B5", 516, 729},
    NamedSize{"Letter", 612, 792},  NamedSize{"Legal", 612, 1008},    NamedSize{"Tabloid", 792, 1224},
    NamedSize{"Ledger", 1224, 792}, NamedSize{"Executive", 522, 756}, NamedSize{"Statement", 396, 612},
    NamedSize{"Folio", 595, 935},
};

// What is left of 80 columns beside the names of the options.
constexpr std::size_t kNamesLineLength = 46;

struct Unit {
  std::string_view name;
  double points;
};

constexpr std::array kUnits{Unit{"pt", 1}, Unit{"mm", 72 / 25.4}, Unit{"cm", 72 / 2.54}, Unit{"in", 72}};

double takeUnit(std::string_view& text) {
  for (const Unit& unit : kUnits) {
    if (!text.ends_with(unit.name)) continue;
    text.remove_suffix(unit.name.size());
    return unit.points;
  }
  return 1;
}

std::optional<double> wholeNumber(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<Box> parseMeasures(std::string_view text) {
  // The unit stands once, behind the height, and counts for both.
  const double points = takeUnit(text);
  const std::size_t cross = text.find('x');
  if (cross == std::string_view::npos) return std::nullopt;
  const auto width = wholeNumber(text.substr(0, cross));
  const auto height = wholeNumber(text.substr(cross + 1));
  if (!width || !height) return std::nullopt;
  const Box box{0, 0, *width * points, *height * points};
  if (!box.isPageSize()) return std::nullopt;
  return box;
}

}  // namespace

std::optional<Box> parseMedia(std::string_view text) {
  const std::string wanted = lowered(text);
  for (const NamedSize& size : kNamedSizes) {
    // Names come first, as none of them looks like a measure.
    if (lowered(size.name) == wanted) return Box{0, 0, size.width, size.height};
  }
  return parseMeasures(wanted);
}

std::string mediaNames() {
  std::string names;
  std::size_t lineBegin = 0;
  for (const NamedSize& size : kNamedSizes) {
    const bool isFull = names.size() + size.name.size() - lineBegin > kNamesLineLength;
    // A comma stays at the end of its line, also of one that is full.
    if (!names.empty()) names += isFull ? ",\n" : ", ";
    if (isFull) lineBegin = names.size();
    names += size.name;
  }
  return names;
}

}  // namespace quillpress::cli
