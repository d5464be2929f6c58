#pragma once

#include <qpdf/QPDF.hh>

#include "cli/base/ArchivePart.h"

namespace quillpress::cli {

// Adds to a font dictionary what PDF/A asks for besides the program: which glyphs a subset holds. Throws
// ArchiveError when the font has no program in the file.
void completeFont(QPDF& pdf, QPDFObjectHandle font, ArchivePart part);

}  // namespace quillpress::cli
