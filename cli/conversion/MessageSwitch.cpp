#include "cli/conversion/MessageSwitch.h"

#include <cstdlib>

namespace quillpress::cli {

namespace {

// What the converter looks at.
constexpr const char* kVariable = "QUILLPRESS_MESSAGES";
constexpr const char* kStandardError = "stderr";

void set(const char* value) {
  if (value == nullptr) {
    unsetenv(kVariable);
  } else {
    setenv(kVariable, value, 1);
  }
}

}  // namespace

MessageSwitch::MessageSwitch(Target target) {
  // What the user has set for the library holds again afterwards.
  const char* const present = std::getenv(kVariable);
  if (present != nullptr) before_ = present;
  set(target == Target::kStandardError ? kStandardError : nullptr);
}

MessageSwitch::~MessageSwitch() {
  set(before_ ? before_->c_str() : nullptr);
}

}  // namespace quillpress::cli
