#include "cli/conversion/Aside.h"

namespace quillpress::cli {

// No process can be copied here, and a thread that never ends could not be ended without harm. So there is no
// answer, and who asks goes the other way.
bool askAside(std::chrono::milliseconds /*limit*/, const std::function<bool()>& /*question*/) {
  return false;
}

}  // namespace quillpress::cli
