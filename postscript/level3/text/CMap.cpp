#include "postscript/level3/text/CMap.h"

#include <algorithm>

namespace quillpress::level3 {

namespace {

unsigned byteAt(std::string_view bytes, std::size_t place) {
  return static_cast<unsigned char>(bytes[place]);
}

std::uint32_t numberOf(std::string_view bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) number = number << 8 | byteAt(bytes, i);
  return number;
}

// Shorter codes first, then by where a range begins.
bool comesBefore(const CMap::Mapping& one, const CMap::Mapping& other) {
  if (one.range.first.size() != other.range.first.size()) {
    return one.range.first.size() < other.range.first.size();
  }
  return one.range.first < other.range.first;
}

// The last range of that length that begins at or before the code; of equal ones, the last that was added.
const CMap::Mapping* findIn(const std::vector<CMap::Mapping>& mappings, std::string_view code) {
  const auto end = std::upper_bound(mappings.begin(), mappings.end(), code,
                                    [](std::string_view wanted, const CMap::Mapping& mapping) {
                                      if (wanted.size() != mapping.range.first.size()) {
                                        return wanted.size() < mapping.range.first.size();
                                      }
                                      return wanted < mapping.range.first;
                                    });
  // Ranges of one mapping seldom overlap; a few steps back find an enclosing one.
  constexpr int kSteps = 64;
  int steps = 0;
  for (auto each = end; each != mappings.begin() && steps < kSteps; ++steps) {
    --each;
    if (each->range.contains(code)) return &*each;
  }
  return nullptr;
}

}  // namespace

bool CMap::Range::contains(std::string_view code) const {
  if (code.size() != first.size() || code.size() != last.size()) return false;
  for (std::size_t i = 0; i < code.size(); ++i) {
    if (byteAt(code, i) < byteAt(first, i) || byteAt(code, i) > byteAt(last, i)) return false;
  }
  return true;
}

std::uint32_t CMap::Range::offsetOf(std::string_view code) const {
  return numberOf(code) - numberOf(first);
}

void CMap::add(Mapping mapping) {
  if (mapping.range.first.empty() || mapping.range.first.size() > 4) return;
  (mapping.target == Target::kNotdef ? notdefs_ : mappings_).push_back(std::move(mapping));
}

void CMap::use(const CMap& other) {
  isIdentity = other.isIdentity;
  codespaces_.insert(codespaces_.begin(), other.codespaces_.begin(), other.codespaces_.end());
  mappings_.insert(mappings_.begin(), other.mappings_.begin(), other.mappings_.end());
  notdefs_.insert(notdefs_.begin(), other.notdefs_.begin(), other.notdefs_.end());
}

void CMap::finish() {
  std::stable_sort(mappings_.begin(), mappings_.end(), comesBefore);
  std::stable_sort(notdefs_.begin(), notdefs_.end(), comesBefore);
}

// A code that no range holds takes as many bytes as the shortest range that its beginning fits.
std::size_t CMap::lengthOf(std::string_view bytes) const {
  std::size_t shortest = 0;
  for (const Range& range : codespaces_) {
    const std::size_t length = range.first.size();
    if (length <= bytes.size() && range.contains(bytes.substr(0, length))) return length;
    const bool beginsWell =
        byteAt(bytes, 0) >= byteAt(range.first, 0) && byteAt(bytes, 0) <= byteAt(range.last, 0);
    if (beginsWell && (shortest == 0 || length < shortest)) shortest = length;
  }
  if (shortest == 0) {
    for (const Range& range : codespaces_) {
      if (shortest == 0 || range.first.size() < shortest) shortest = range.first.size();
    }
  }
  return std::min(std::max<std::size_t>(shortest, 1), bytes.size());
}

CMap::Found CMap::find(std::string_view bytes) const {
  Found found;
  if (isIdentity) {
    found.length = std::min<std::size_t>(bytes.size(), 2);
    found.code = numberOf(bytes.substr(0, found.length));
    found.value = found.code;
    return found;
  }
  found.length = lengthOf(bytes);
  const std::string_view code = bytes.substr(0, found.length);
  found.code = numberOf(code);
  const Mapping* mapping = findIn(mappings_, code);
  if (mapping == nullptr) mapping = findIn(notdefs_, code);
  if (mapping == nullptr) {
    found.target = Target::kNotdef;
    return found;
  }
  found.font = mapping->font;
  found.target = mapping->target;
  found.name = mapping->name;
  found.value = mapping->first;
  if (mapping->target == Target::kCid || mapping->target == Target::kCode) {
    found.value += mapping->range.offsetOf(code);
  }
  return found;
}

}  // namespace quillpress::level3
