#pragma once

#include <quillpress/driver.h>
#include <windows.h>

// quillpress.dll as a printer driver loads it.
class DriverLibrary {
 public:
  DriverLibrary();
  DriverLibrary(const DriverLibrary&) = delete;
  DriverLibrary& operator=(const DriverLibrary&) = delete;
  ~DriverLibrary() { FreeLibrary(module_); }

  decltype(&DocStart2K) docStart2K;
  decltype(&DocWrite) docWrite;
  decltype(&DocEnd) docEnd;
  decltype(&getIntVal) intVal;
  decltype(&getStringVal) stringVal;

 private:
  HMODULE module_;
};
