#pragma once

#include <string_view>

namespace quillpress::level3 {

// Whether the whole text matches: "*" stands for any characters, "?" for one, a backslash takes the next as
// it is.
bool matchesWildcards(std::string_view text, std::string_view pattern);

}  // namespace quillpress::level3
