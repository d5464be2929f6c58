#pragma once

#include <qpdf/QPDF.hh>
#include <string>

#include "cli/base/ArchivePart.h"

namespace quillpress::cli {

// Makes an annotation one that is printed and looks the same everywhere. Throws ArchiveError for kinds that
// have no place in an archive, and for those that are hidden or have no look of their own.
void completeAnnotation(QPDF& pdf, QPDFObjectHandle annotation, ArchivePart part);

// Throws ArchiveError for actions that reach out of the document for more than a link does.
void checkAction(QPDFObjectHandle action);

}  // namespace quillpress::cli
