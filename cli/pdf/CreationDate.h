#pragma once

#include <string>

namespace quillpress::cli {

// The date for /CreationDate, in universal time. SOURCE_DATE_EPOCH, seconds since 1970, stands for the
// present when it is set, so that a file can be made again byte for byte.
std::string creationDate();

}  // namespace quillpress::cli
