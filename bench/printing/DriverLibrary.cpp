#include "bench/printing/DriverLibrary.h"

#include <bit>

#include "bench/printing/Check.h"

namespace {

template <typename Function>
void find(HMODULE module, const char* name, Function& function) {
  const FARPROC address = GetProcAddress(module, name);
  check(address != nullptr, name);
  function = std::bit_cast<Function>(address);
}

}  // namespace

DriverLibrary::DriverLibrary() : module_(LoadLibraryA("quillpress.dll")) {
  check(module_ != nullptr, "LoadLibrary(quillpress.dll)");
  find(module_, "DocStart2K", docStart2K);
  find(module_, "DocWrite", docWrite);
  find(module_, "DocEnd", docEnd);
  find(module_, "getIntVal", intVal);
  find(module_, "getStringVal", stringVal);
}
