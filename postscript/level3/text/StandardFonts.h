#pragma once

#include <optional>
#include <string_view>

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// A font that the job names and does not carry, from the system's set, as a dictionary defined under that
// name; and "Name-CMap", composed from a CIDFont and a CMap that are there. Nothing when there is none.
std::optional<Object> standardFont(Interpreter& interpreter, std::string_view name);

}  // namespace quillpress::level3
