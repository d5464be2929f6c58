#pragma once

#include <qpdf/QPDFObjectHandle.hh>
#include <string>

#include "cli/base/ArchivePart.h"

namespace quillpress::cli {

// Makes one dictionary of the file fit for an archive, without those in it: hints that it must not hold are
// taken away, and for what would be seen otherwise ArchiveError is thrown.
void tidyDictionary(QPDFObjectHandle dictionary, ArchivePart part);

// Colour spaces are arrays that begin with their kind.
void checkColourSpace(QPDFObjectHandle array, ArchivePart part);

}  // namespace quillpress::cli
