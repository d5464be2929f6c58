#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quillpress::cli {

// Reads a number of bytes, 1 to 1 GiB: a whole number, with K (1024) or M (1024 K) behind it if wanted.
// The converter counts in ints, which sets the bound.
std::optional<std::size_t> parseByteCount(std::string_view text);

}  // namespace quillpress::cli
