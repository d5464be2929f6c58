#pragma once

#include <qpdf/QPDFObjectHandle.hh>
#include <string>

#include "cli/base/ArchivePart.h"

namespace quillpress::cli {

// What programs that show archives need not be able to hold. Each throws ArchiveError with its name.

// Names are as they stand in a file, decoded, with their slash.
void checkName(const std::string& name);
void checkString(const std::string& bytes, ArchivePart part);
void checkInteger(const std::string& digits);

[[nodiscard]] bool isInteger(double whole);
// Whether a number with a fraction is beyond what the part has room for.
[[nodiscard]] bool isTooLarge(double value, ArchivePart part);

// A value of the file, without those in it.
void checkLimits(QPDFObjectHandle value, ArchivePart part);

}  // namespace quillpress::cli
