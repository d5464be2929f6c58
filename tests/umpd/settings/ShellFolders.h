#pragma once

#include <windows.h>
// After windows.h.
#include <shlobj.h>

#include <set>
#include <string>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// The path of one of the user's folders, as Windows tells it.
std::wstring shellFolder(int folder);

// Windows does not know these folders.
void forgetShellFolders(Library& library, const std::set<int>& unknown);

}  // namespace quillpress::harness
