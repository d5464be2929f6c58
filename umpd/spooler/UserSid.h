#pragma once

#include <string>

namespace quillpress::driver {

// The calling user's security identifier as text, which names the user's key below HKEY_USERS; empty on
// the 9x family and when the account is not known.
std::wstring userSidText();

}  // namespace quillpress::driver
