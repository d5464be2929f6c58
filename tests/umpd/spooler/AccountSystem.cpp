#include "tests/umpd/spooler/AccountSystem.h"

#include <algorithm>

namespace quillpress::harness {
namespace {

constexpr wchar_t kDomain[] = L"DOMAIN";
constexpr DWORD kDomainSize = sizeof kDomain / sizeof *kDomain;

}  // namespace

AccountSystem::AccountSystem(Library& library) : sid_(sidOf({0, 0, 0, 0, 0, 5}, {21, 1, 2, 3, 1000})) {
  library.replace("LookupAccountNameW",
                  [this](LPCWSTR system, LPCWSTR account, PSID sid, LPDWORD sidSize, LPWSTR domain,
                         LPDWORD domainSize, PSID_NAME_USE use) -> BOOL {
                    lookups_.push_back({system == nullptr ? L"" : system, account, sid == nullptr});
                    if (failsSizes_) {
                      SetLastError(ERROR_NONE_MAPPED);
                      return FALSE;
                    }
                    const bool fits = *sidSize >= sid_.size() && *domainSize >= kDomainSize;
                    *sidSize = static_cast<DWORD>(sid_.size());
                    *domainSize = fits ? kDomainSize - 1 : kDomainSize;
                    if (!fits || failsData_) {
                      SetLastError(fits ? ERROR_NONE_MAPPED : ERROR_INSUFFICIENT_BUFFER);
                      return FALSE;
                    }
                    std::copy(sid_.begin(), sid_.end(), static_cast<BYTE*>(sid));
                    std::copy_n(kDomain, kDomainSize, domain);
                    *use = SidTypeUser;
                    return TRUE;
                  });
}

std::vector<BYTE> sidOf(const std::vector<BYTE>& authority, const std::vector<DWORD>& subAuthorities,
                        BYTE revision) {
  std::vector<BYTE> sid;
  sid.push_back(revision);
  sid.push_back(static_cast<BYTE>(subAuthorities.size()));
  for (const BYTE byte : authority) sid.push_back(byte);
  for (const DWORD subAuthority : subAuthorities) {
    for (unsigned shift = 0; shift < 32; shift += 8) sid.push_back(static_cast<BYTE>(subAuthority >> shift));
  }
  return sid;
}

}  // namespace quillpress::harness
