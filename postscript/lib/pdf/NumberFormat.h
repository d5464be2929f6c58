#pragma once

#include <string>

namespace quillpress {

// Appends a number as content text writes it. The number of decimals follows the magnitude; zeros at the
// end go, except from numbers of 10000 and more, which have no decimals. Infinity and NaN are written as 0.
void appendNumber(std::string& text, double value);

}  // namespace quillpress
