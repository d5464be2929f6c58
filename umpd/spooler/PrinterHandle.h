#pragma once

#include "spooler/Winspool.h"
#include "win32/UniqueHandle.h"

namespace quillpress {

struct PrinterHandleTraits {
  using Handle = HANDLE;
  static Handle none() { return nullptr; }
  static void close(Handle printer) { ClosePrinter(printer); }
};

using PrinterHandle = UniqueHandle<PrinterHandleTraits>;

}  // namespace quillpress
