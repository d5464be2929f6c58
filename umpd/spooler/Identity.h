#pragma once

#include <optional>
#include <string>

#include "umpd/win32/SystemLibrary.h"

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

// For as long as this object lives, the thread acts with the spooler's own identity instead of that of the
// client whose job it prints. Does nothing on the 9x family, which has no identities.
class SpoolerIdentity {
 public:
  SpoolerIdentity();
  SpoolerIdentity(const SpoolerIdentity&) = delete;
  SpoolerIdentity& operator=(const SpoolerIdentity&) = delete;
  ~SpoolerIdentity();

 private:
  SystemLibrary spooler_;
  HANDLE clientToken_ = nullptr;
};
}  // namespace quillpress::driver
