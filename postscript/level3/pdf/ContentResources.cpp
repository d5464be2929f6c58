#include "postscript/level3/pdf/ContentResources.h"

#include <algorithm>
#include <string_view>

#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

constexpr std::array<std::string_view, kResourceKinds> kDictionaries{"ColorSpace", "ExtGState", "Font",
                                                                     "Pattern",    "Shading",   "XObject"};
constexpr std::array<char, kResourceKinds> kLetters{'C', 'G', 'F', 'P', 'S', 'X'};

std::string nameOf(std::size_t kind, ObjectNumber number) {
  std::string name(1, kLetters[kind]);
  appendInteger(name, number);
  return name;
}

}  // namespace

void ContentResources::use(ResourceKind kind, ObjectNumber number, std::string& content) {
  const auto index = static_cast<std::size_t>(kind);
  std::vector<ObjectNumber>& numbers = numbers_[index];
  const auto place = std::lower_bound(numbers.begin(), numbers.end(), number);
  if (place == numbers.end() || *place != number) numbers.insert(place, number);
  appendName(content, nameOf(index, number));
}

void ContentResources::add(const ContentResources& other) {
  for (std::size_t kind = 0; kind < kResourceKinds; ++kind) {
    std::vector<ObjectNumber>& numbers = numbers_[kind];
    for (const ObjectNumber number : other.numbers_[kind]) {
      const auto place = std::lower_bound(numbers.begin(), numbers.end(), number);
      if (place == numbers.end() || *place != number) numbers.insert(place, number);
    }
  }
}

bool ContentResources::isEmpty() const {
  return std::all_of(numbers_.begin(), numbers_.end(), [](const auto& numbers) { return numbers.empty(); });
}

void ContentResources::clear() {
  for (auto& numbers : numbers_) numbers.clear();
}

std::string ContentResources::text() const {
  DictionaryText resources;
  for (std::size_t kind = 0; kind < kResourceKinds; ++kind) {
    if (numbers_[kind].empty()) continue;
    DictionaryText names;
    for (const ObjectNumber number : numbers_[kind]) names.reference(nameOf(kind, number), number);
    resources.entry(kDictionaries[kind], names.text());
  }
  return resources.text();
}

}  // namespace quillpress::level3
