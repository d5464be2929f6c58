#pragma once

#include <cstdio>

#include "cli/pdf/Document.h"
#include "cli/pdf/ObjectStore.h"
#include "cli/spool/Spool.h"

namespace quillpress::cli {

// Writes the PDF file of `document` to `file`. Throws OutputError when that cannot be done.
void writePdf(const Document& document, const ObjectStore& objects, const Spool& spool, std::FILE* file);

}  // namespace quillpress::cli
