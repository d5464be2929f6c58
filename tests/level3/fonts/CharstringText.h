#pragma once

#include <string>
#include <string_view>

namespace quillpress::level3::testing {

// The charstring for a text of whole numbers and operators by name ("50 800 hsbw ... endchar"); Type 1 and
// Type 2 share numbers up to 1131 and most codes.
std::string charstringOf(std::string_view text);

}  // namespace quillpress::level3::testing
