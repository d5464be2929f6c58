#pragma once

#include <string_view>

namespace quillpress::cli {

// Throws PageError when a number in `content` is beyond what PDF readers take. `content` is text of whole
// operators, without inline images, whose data may look like anything.
void checkNumbers(std::string_view content);

}  // namespace quillpress::cli
