#pragma once

#include <string>

namespace quillpress::driver {

// The operating system's explanation of an error code, in the default language and with its final line
// break; "Error string not found" when it has none.
std::wstring systemMessage(unsigned long errorCode);

// The calling user's name, at most 259 characters; empty when the system does not tell.
std::wstring userName();

// The folder of the system's own libraries, without a final backslash; empty when it cannot be had.
std::wstring systemFolder();

// Folders of the calling user, as the shell names them; empty when the shell does not know one.

std::wstring documentsFolder();

// The local application data; the roaming one where there is no local one.
std::wstring applicationDataFolder();

}  // namespace quillpress::driver
