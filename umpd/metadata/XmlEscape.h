#pragma once

#include <string>
#include <string_view>

namespace quillpress {

// The text as it stands in XML content and in attribute values of either quote.
std::wstring xmlEscape(std::wstring_view text);

}  // namespace quillpress
