#pragma once

#include <ctime>
#include <string>

namespace quillpress {

// A local time in the form of ISO 8601 with its offset: "2009-02-13T23:31:30+01:00". The bias is UTC less
// local time, in minutes. Empty when the time cannot be written.
std::wstring formatXmpDate(const std::tm& localTime, long biasMinutes);

}  // namespace quillpress
