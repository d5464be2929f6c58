#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "postscript/level3/pdf/PdfSyntax.h"

namespace quillpress::level3 {

enum class ResourceKind : std::uint8_t { kColourSpace, kExtGState, kFont, kPattern, kShading, kXObject };
constexpr std::size_t kResourceKinds = 6;

// What one content stream names. A resource's name is made of its kind and its object's number, so that it is
// the same wherever it is used and content can be shared.
class ContentResources {
 public:
  // Notes the use, and appends the name: "/X12".
  void use(ResourceKind kind, ObjectNumber number, std::string& content);

  // Notes all that another content uses.
  void add(const ContentResources& other);

  bool isEmpty() const;
  void clear();

  // The resource dictionary.
  std::string text() const;

 private:
  // Sorted, so that the same resources make the same dictionary.
  std::array<std::vector<ObjectNumber>, kResourceKinds> numbers_;
};

}  // namespace quillpress::level3
