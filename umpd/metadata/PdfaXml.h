#pragma once

#include <string>
#include <string_view>

#include "umpd/settings/DriverSettings.h"

namespace quillpress::driver {
// The XMP packet for a document printed now with these settings. The document information is read from the
// registry as it is now, not as it was when the job began.
std::wstring buildPdfaXml(DriverSettings& settings, std::wstring_view documentName);
}  // namespace quillpress::driver
