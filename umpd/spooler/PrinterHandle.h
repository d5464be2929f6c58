#pragma once

#include "umpd/spooler/Winspool.h"
#include "umpd/win32/UniqueHandle.h"

namespace quillpress {

struct PrinterHandleTraits {
  using Handle = HANDLE;
  static Handle none() { return nullptr; }
  static void close(Handle printer) { ClosePrinter(printer); }
};

using PrinterHandle = UniqueHandle<PrinterHandleTraits>;

}  // namespace quillpress
