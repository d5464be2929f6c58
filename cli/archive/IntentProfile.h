#pragma once

#include <string>

#include "cli/base/ArchivePart.h"

namespace quillpress::cli {

// The ICC profile of the device that the colours of an archive are meant for.
struct IntentProfile {
  std::string bytes;
  // As people call it.
  std::string description;
  // 1 for gray, 3 for RGB, 4 for CMYK.
  int components = 3;
};

// sRGB, the same bytes whenever it is made.
IntentProfile standardIntent();

// Throws UsageError when the file is no profile that the part of PDF/A takes: of a screen or a printer, for
// gray, RGB or CMYK, and no newer than the part.
IntentProfile readIntent(const std::string& file, ArchivePart part);

// Four inks of a usual press, for colours in CMYK that no profile has been given for.
std::string pressProfile();

}  // namespace quillpress::cli
