#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string_view>
#include <vector>

namespace quillpress {

// The order of a dictionary's keys: the positions of its entries, sorted by key. It can be mended in place,
// so that a walk over a dictionary that changes under it need not sort anew at every step. The positions lie
// in runs of bounded length: a change moves the rest of one run, however large the dictionary is.
//
// `keyOf` gives the key text of a position, as it is before an insertion and until a removal is done.
class KeyOrder {
 public:
  [[nodiscard]] bool empty() const { return runs_.empty(); }
  void clear() { runs_.clear(); }

  // Sorts the positions 0 to count-1.
  template <typename KeyOf>
  void sort(std::size_t count, KeyOf keyOf) {
    std::vector<std::uint32_t> all(count);
    std::iota(all.begin(), all.end(), 0U);
    std::sort(all.begin(), all.end(), [&](std::uint32_t a, std::uint32_t b) { return keyOf(a) < keyOf(b); });
    std::vector<Run> runs;
    for (auto from = all.begin(); from != all.end();) {
      const auto to = from + std::min<std::ptrdiff_t>(kLongestRun / 2, all.end() - from);
      runs.emplace_back(from, to);
      from = to;
    }
    runs_ = std::move(runs);
  }

  // Adds a position, whose key is new. REQUIRES: not empty. When memory runs out, nothing has changed.
  template <typename KeyOf>
  void insert(std::uint32_t position, std::string_view key, KeyOf keyOf) {
    auto run = runOf(key, keyOf);
    if (run == runs_.end()) --run;
    if (run->size() >= kLongestRun) run = split(run, key, keyOf);
    run->insert(placeIn(*run, key, keyOf), position);
  }

  // Takes the position with that key out. REQUIRES: it is there.
  template <typename KeyOf>
  void erase(std::string_view key, KeyOf keyOf) {
    const auto run = runOf(key, keyOf);
    run->erase(placeIn(*run, key, keyOf));
    if (run->empty()) runs_.erase(run);
  }

  // The entry with that key has moved to another position. REQUIRES: it is there.
  template <typename KeyOf>
  void move(std::string_view key, std::uint32_t position, KeyOf keyOf) {
    *placeIn(*runOf(key, keyOf), key, keyOf) = position;
  }

  // The position of the entry that is the `index`th in order. REQUIRES: there are that many
  [[nodiscard]] std::uint32_t at(std::size_t index) const {
    auto run = runs_.begin();
    for (; index >= run->size(); ++run) index -= run->size();
    return (*run)[index];
  }

 private:
  using Run = std::vector<std::uint32_t>;  // never empty
  static constexpr std::size_t kLongestRun = 512;

  // The first run that ends at the key or after it.
  template <typename KeyOf>
  std::vector<Run>::iterator runOf(std::string_view key, KeyOf keyOf) {
    return std::lower_bound(runs_.begin(), runs_.end(), key, [&](const Run& run, std::string_view sought) {
      return keyOf(run.back()) < sought;
    });
  }

  template <typename KeyOf>
  static Run::iterator placeIn(Run& run, std::string_view key, KeyOf keyOf) {
    return std::lower_bound(
        run.begin(), run.end(), key,
        [&](std::uint32_t position, std::string_view sought) { return keyOf(position) < sought; });
  }

  // Makes two of a run, and gives the one where the key belongs.
  template <typename KeyOf>
  std::vector<Run>::iterator split(std::vector<Run>::iterator run, std::string_view key, KeyOf keyOf) {
    const auto middle = run->begin() + static_cast<std::ptrdiff_t>(run->size() / 2);
    Run upper(middle, run->end());
    const auto index = run - runs_.begin();
    runs_.insert(run + 1, std::move(upper));
    const auto lower = runs_.begin() + index;
    lower->resize(lower->size() - (lower + 1)->size());
    return keyOf(lower->back()) < key ? lower + 1 : lower;
  }

  std::vector<Run> runs_;
};

}  // namespace quillpress
