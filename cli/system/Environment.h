#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

namespace quillpress::cli {

// Sets a variable of this process's environment, or removes it. REQUIRES: no other thread reads it.
void setVariable(const char* name, const std::optional<std::string>& value);

// The date and the time of `seconds` since 1970 in universal time; zeroes when no calendar reaches so far.
std::tm universalTime(std::int64_t seconds);

// How many processors there are for the process, 1 at least.
unsigned processorCount();

}  // namespace quillpress::cli
