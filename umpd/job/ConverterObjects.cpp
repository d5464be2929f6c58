#include "umpd/job/ConverterObjects.h"

#include "postscript/lib/pdf/PdfObjectList.h"
#include "umpd/win32/CriticalSection.h"

namespace quillpress {

void clearConverterObjects() {
  static CriticalSection section;
  const CriticalSection::Lock lock(section);
  PdfObjectList::ofProcess().clear();
}

}  // namespace quillpress
