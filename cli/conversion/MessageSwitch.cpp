#include "cli/conversion/MessageSwitch.h"

#include <cstdlib>

#include "cli/system/Environment.h"

namespace quillpress::cli {

namespace {

// What the converter looks at.
constexpr const char* kVariable = "QUILLPRESS_MESSAGES";
constexpr const char* kStandardError = "stderr";

}  // namespace

MessageSwitch::MessageSwitch(Target target) {
  // What the user has set for the library holds again afterwards.
  const char* const present = std::getenv(kVariable);
  if (present != nullptr) before_ = present;
  setVariable(kVariable,
              target == Target::kStandardError ? std::optional<std::string>(kStandardError) : std::nullopt);
}

MessageSwitch::~MessageSwitch() {
  setVariable(kVariable, before_);
}

}  // namespace quillpress::cli
