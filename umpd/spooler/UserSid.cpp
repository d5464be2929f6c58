#include "umpd/spooler/UserSid.h"

#include <algorithm>
#include <vector>

#include "umpd/rules/SidText.h"
#include "umpd/rules/TryResize.h"
#include "umpd/spooler/DomainController.h"
#include "umpd/win32/SystemInformation.h"
#include "umpd/win32/Windows.h"
#include "umpd/win32/WindowsVersion.h"

namespace quillpress::driver {
namespace {

// The account's security identifier in the system's form; empty when the account is not known there.
std::vector<BYTE> lookUpAccount(const std::wstring& system, const std::wstring& account) {
  const wchar_t* const systemName = system.empty() ? nullptr : system.c_str();
  DWORD sidSize = 0;
  DWORD domainSize = 0;
  SID_NAME_USE use{};
  // Fails by design, and tells both sizes. The domain is not wanted, but the call does not go without room
  // for it.
  LookupAccountNameW(systemName, account.c_str(), nullptr, &sidSize, nullptr, &domainSize, &use);
  std::vector<BYTE> sid;
  std::vector<wchar_t> domain;
  if (sidSize == 0 || !tryResize(sid, sidSize) || !tryResize(domain, std::size_t{domainSize} + 1)) return {};
  ++domainSize;
  if (LookupAccountNameW(systemName, account.c_str(), sid.data(), &sidSize, domain.data(), &domainSize,
                         &use) == 0) {
    return {};
  }
  return sid;
}

std::wstring textOf(PSID sid) {
  // The functions below do not check what they are given.
  if (IsValidSid(sid) == 0) return {};
  const BYTE count = *GetSidSubAuthorityCount(sid);
  std::vector<std::uint32_t> subAuthorities;
  for (DWORD i = 0; i < count; ++i) subAuthorities.push_back(*GetSidSubAuthority(sid, i));
  SecurityIdentifier identifier;
  const BYTE(&authority)[6] = GetSidIdentifierAuthority(sid)->Value;
  std::copy(std::begin(authority), std::end(authority), identifier.authority.begin());
  identifier.subAuthorities = subAuthorities;
  return sidText(identifier, sidTextSize(identifier)).value_or(std::wstring());
}

std::wstring askForText() {
  if (windowsVersion().is9x()) return {};
  std::vector<BYTE> sid = lookUpAccount(domainControllerName(), userName());
  return sid.empty() ? std::wstring() : textOf(sid.data());
}

}  // namespace

const std::wstring& UserSid::text() {
  // An empty answer is remembered as well: the job opens its registry several times, and each question may
  // wait for the network.
  if (!text_) text_ = askForText();
  return *text_;
}

}  // namespace quillpress::driver
