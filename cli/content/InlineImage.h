#pragma once

#include <cstddef>
#include <string_view>

namespace quillpress::cli {

// The length of the inline image, EI included, with whose BI `text` begins. Its data has no length of its
// own and may hold anything, an EI too, so the size of the image says where the search for EI begins.
std::size_t inlineImageLength(std::string_view text);

}  // namespace quillpress::cli
