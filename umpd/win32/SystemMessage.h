#pragma once

#include <string>

namespace quillpress {

// The operating system's explanation of an error code, in the default language and with its final line
// break; "Error string not found" when it has none.
std::wstring systemMessage(unsigned long errorCode);

}  // namespace quillpress
