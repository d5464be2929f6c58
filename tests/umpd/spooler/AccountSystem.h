#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// The account system as the library sees it. It knows every account by one identifier.
class AccountSystem {
 public:
  struct Lookup {
    std::wstring system;  // empty for the local machine
    std::wstring account;
    bool isForSizes;
  };

  explicit AccountSystem(Library& library);
  AccountSystem(const AccountSystem&) = delete;
  AccountSystem& operator=(const AccountSystem&) = delete;

  // The identifier in the system's form.
  void setSid(std::vector<BYTE> sid) { sid_ = std::move(sid); }

  // Accounts are unknown from now on; or only their data cannot be had, after the sizes.
  void failSizes() { failsSizes_ = true; }
  void failData() { failsData_ = true; }

  [[nodiscard]] const std::vector<Lookup>& lookups() const { return lookups_; }

 private:
  std::vector<BYTE> sid_;
  bool failsSizes_ = false;
  bool failsData_ = false;
  std::vector<Lookup> lookups_;
};

// An identifier in the system's form.
std::vector<BYTE> sidOf(const std::vector<BYTE>& authority, const std::vector<DWORD>& subAuthorities,
                        BYTE revision = 1);

}  // namespace quillpress::harness
