#pragma once

#include <optional>
#include <string>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// Has the library run for a user of this name; without one, asking for the name fails.
void pretendUser(Library& library, const std::optional<std::wstring>& name);

// The user who runs the tests.
std::wstring currentUserName();

// A name that no other test program uses: what is named after the user is then this program's own.
std::wstring ownUserName();

}  // namespace quillpress::harness
