#pragma once

#include <optional>
#include <string>

namespace quillpress::driver {

// The calling user's security identifier as text, which names the user's key below HKEY_USERS.
class UserSid {
 public:
  // Empty on the 9x family and when the account is not known. The account system is asked once, whatever it
  // answers: it may have to wait a minute for the network.
  const std::wstring& text();

 private:
  std::optional<std::wstring> text_;
};

}  // namespace quillpress::driver
