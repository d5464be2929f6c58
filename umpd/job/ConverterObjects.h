#pragma once

namespace quillpress {

// Empties the converter's list of PDF objects, which is one for the process. Jobs may do this on several
// threads at once.
void clearConverterObjects();

}  // namespace quillpress
