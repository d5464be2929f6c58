#pragma once

#include <string>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// Has the spooler call every printer by this name, in the ANSI code page. Wine itself knows plain names only.
void pretendPrinterName(Library& library, const std::string& name);

}  // namespace quillpress::harness
