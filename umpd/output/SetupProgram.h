#pragma once

#include <string>

#include "umpd/spooler/Identity.h"

namespace quillpress::driver {

// A user whose log-on still starts the launcher of the old driver interface gets the new one: the set-up
// program runs for the printer, and this call waits for its end.
void runSetupProgramIfNeeded(const std::wstring& printerName, UserSid& user);

}  // namespace quillpress::driver
