#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

struct Box {
  std::wstring text;
  std::wstring caption;
  UINT style = 0;
  HWND owner = nullptr;
  bool wide = false;  // shown by MessageBoxW
};

// The message boxes of the library, answered with "OK" at once. A test that does not take the boxes that it
// caused fails: a box that nobody expects stops a print job until somebody sees it.
class Boxes {
 public:
  explicit Boxes(Library& library);
  ~Boxes();
  Boxes(const Boxes&) = delete;
  Boxes& operator=(const Boxes&) = delete;

  // The boxes since the last call.
  [[nodiscard]] std::vector<Box> take();

  // The only box since the last call. The test fails unless it is one, and an empty record is returned.
  [[nodiscard]] Box takeOne();

 private:
  std::vector<Box> boxes_;
};

std::ostream& operator<<(std::ostream& out, const Box& box);

}  // namespace quillpress::harness
