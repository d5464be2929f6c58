#include "job/ConverterObjects.h"

#include "pdf/PdfObjectList.h"
#include "win32/CriticalSection.h"

namespace quillpress {

void clearConverterObjects() {
  static CriticalSection section;
  const CriticalSection::Lock lock(section);
  PdfObjectList::ofProcess().clear();
}

}  // namespace quillpress
