#pragma once

#include <string>

namespace quillpress::driver {

// The primary domain controller of this machine, or the empty text. Asking the network may take long, so
// the processes of a session ask once and share the answer; waiting for another's question ends after a
// minute.
std::wstring domainControllerName();

}  // namespace quillpress::driver
