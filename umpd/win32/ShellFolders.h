#pragma once

#include <string>

namespace quillpress {

// Folders of the calling user, as the shell names them; empty when the shell does not know one.

std::wstring documentsFolder();

// The local application data; the roaming one where there is no local one.
std::wstring applicationDataFolder();

}  // namespace quillpress
