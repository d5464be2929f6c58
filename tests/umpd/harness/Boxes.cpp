#include "tests/umpd/harness/Boxes.h"

#include <ostream>
#include <utility>

#include "tests/umpd/harness/Text.h"

namespace quillpress::harness {

Boxes::Boxes(Library& library) {
  library.replaceIfImported("MessageBoxA",
                            [this](HWND owner, LPCSTR text, LPCSTR caption, UINT style) -> int {
                              boxes_.push_back({widen(text), widen(caption), style, owner, false});
                              return IDOK;
                            });
  library.replaceIfImported("MessageBoxW",
                            [this](HWND owner, LPCWSTR text, LPCWSTR caption, UINT style) -> int {
                              boxes_.push_back({text, caption, style, owner, true});
                              return IDOK;
                            });
}

Boxes::~Boxes() {
  for (const Box& box : boxes_) ADD_FAILURE() << "an unexpected box: " << box;
}

std::vector<Box> Boxes::take() {
  return std::exchange(boxes_, {});
}

Box Boxes::takeOne() {
  const std::vector<Box> boxes = take();
  if (boxes.size() == 1) return boxes.front();
  ADD_FAILURE() << boxes.size() << " boxes instead of one: " << ::testing::PrintToString(boxes);
  return {};
}

std::ostream& operator<<(std::ostream& out, const Box& box) {
  return out << '[' << narrow(box.caption) << "] " << narrow(box.text);
}

}  // namespace quillpress::harness
