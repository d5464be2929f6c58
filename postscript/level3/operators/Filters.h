#pragma once

#include "postscript/level3/operators/FilterParameters.h"

namespace quillpress::level3 {

// Each filter of a chain asks the one below it, so the chain's length is depth on our own stack.
constexpr std::size_t kDeepestChain = 1000;

// A filter by name. One row each; `decode` or `encode` is null.
struct FilterRow {
  using Decode = SourcePointer (*)(SourcePointer source, const FilterParameters& parameters,
                                   std::span<const Object> operands);
  using Encode = SinkPointer (*)(SinkPointer target, const FilterParameters& parameters,
                                 std::span<const Object> operands);

  std::string_view name;
  // The types of the operands between the dictionary and the name.
  std::initializer_list<Type> operands;
  Decode decode;
  Encode encode;
};

// All filters, which are also the instances of the resource category Filter.
std::span<const FilterRow> filters();
// Null when there is none of that name.
const FilterRow* findFilter(std::string_view name);

}  // namespace quillpress::level3
