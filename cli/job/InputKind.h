#pragma once

#include <string>
#include <string_view>

namespace quillpress::cli {

// Says what a file that is not PostScript seems to be, from its first bytes: "it is a PDF file".
std::string describeInput(std::string_view start);

}  // namespace quillpress::cli
