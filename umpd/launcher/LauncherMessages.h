#pragma once

#include <string_view>

#include "umpd/launcher/LauncherStruct.h"

namespace quillpress {

// Write the two messages into the record. Texts are in the ANSI code page and are cut to their fields. What a
// message does not write keeps what the record held before.

void writeStartPrint(LauncherStruct& record, std::string_view printerName);

void writeStopPrint(LauncherStruct& record, std::string_view printerName, std::string_view documentName,
                    std::string_view outputPath);

}  // namespace quillpress
