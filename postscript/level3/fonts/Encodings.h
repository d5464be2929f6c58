#pragma once

#include <array>
#include <string_view>

namespace quillpress::level3 {

// A glyph name for each code, ".notdef" where there is none.
using EncodingTable = std::array<std::string_view, 256>;

const EncodingTable& standardEncoding();
const EncodingTable& isoLatin1Encoding();
const EncodingTable& expertEncoding();
const EncodingTable& symbolEncoding();
const EncodingTable& zapfDingbatsEncoding();
// Of PDF.
const EncodingTable& winAnsiEncoding();
const EncodingTable& macRomanEncoding();

}  // namespace quillpress::level3
