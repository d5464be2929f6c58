#pragma once

#include "umpd/spooler/UserSid.h"
#include "umpd/win32/Handles.h"

namespace quillpress::driver {

// The registry of the user for whom the thread prints. Inside the spooler this is not the process's own user.
class UserRoot {
 public:
  // `access`: registry rights, KEY_QUERY_VALUE, KEY_SET_VALUE or both. `user` is asked where the system does
  // not find the root by itself.
  UserRoot(REGSAM access, UserSid& user);

  explicit operator bool() const { return key_ != nullptr; }

  // REQUIRES: true as a condition. Borrowed.
  [[nodiscard]] HKEY key() const { return key_; }

 private:
  bool openCurrentUser(REGSAM access);
  void openBySid(REGSAM access, UserSid& user);

  RegistryKey owned_;  // none for a root that the system keeps open anyway
  HKEY key_ = nullptr;
};

}  // namespace quillpress::driver
