#pragma once

#include <string_view>

namespace quillpress::fuzz {

// Runs a program in the full language, for a limited time and in limited memory; what it paints goes nowhere.
void runProgram(std::string_view program);

}  // namespace quillpress::fuzz
