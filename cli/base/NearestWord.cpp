#include "cli/base/NearestWord.h"

#include <algorithm>

namespace quillpress::cli {

namespace {

using Row = std::vector<std::size_t>;

// How many letters have to be put in, taken out, replaced or exchanged with their neighbour.
std::size_t distance(std::string_view one, std::string_view other) {
  Row beforeLast(other.size() + 1);
  Row last(other.size() + 1);
  Row present(other.size() + 1);
  for (std::size_t column = 0; column <= other.size(); ++column) present[column] = column;
  for (std::size_t row = 1; row <= one.size(); ++row) {
    beforeLast.swap(last);
    last.swap(present);
    present[0] = row;
    for (std::size_t column = 1; column <= other.size(); ++column) {
      const std::size_t change = one[row - 1] == other[column - 1] ? 0 : 1;
      present[column] = std::min({last[column] + 1, present[column - 1] + 1, last[column - 1] + change});
      const bool areExchanged =
          row > 1 && column > 1 && one[row - 1] == other[column - 2] && one[row - 2] == other[column - 1];
      if (areExchanged) present[column] = std::min(present[column], beforeLast[column - 2] + 1);
    }
  }
  return present[other.size()];
}

}  // namespace

std::optional<std::string> nearestWord(std::string_view text, const std::vector<std::string>& words) {
  // With more than every third letter wrong, anything would be near.
  constexpr std::size_t kLettersPerMistake = 3;
  std::size_t nearest = text.size() / kLettersPerMistake + 1;
  std::optional<std::string> result;
  for (const std::string& word : words) {
    const std::size_t mistakes = word.starts_with(text) ? 1 : distance(text, word);
    if (mistakes >= nearest) continue;
    nearest = mistakes;
    result = word;
  }
  return result;
}

}  // namespace quillpress::cli
