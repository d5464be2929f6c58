#include "umpd/spooler/Identity.h"

#include <algorithm>
#include <vector>

#include "umpd/rules/Account.h"
#include "umpd/rules/Text.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/Diagnostics.h"
#include "umpd/win32/NamedObjects.h"
#include "umpd/win32/Resources.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {
constexpr DWORD kPollMilliseconds = 876;
// Who works longer than this has most likely died, and nothing else would end the wait.
constexpr DWORD kPatienceMilliseconds = 60'000;

// The record that the processes of a session share, open until this process ends; null when it cannot be had.
DomainControllerRecord* sharedRecord() {
  static CriticalSection section;
  static SharedSection cache(std::wstring(windowsVersion().sessionPrefix()) + L"DomainControllerData",
                             sizeof(DomainControllerRecord));
  // Threads that ask for metadata do not hold the job mutex.
  const CriticalSection::Lock lock(section);
  if (!cache.openOrCreate()) return nullptr;
  return reinterpret_cast<DomainControllerRecord*>(cache.bytes().data());
}

// Other processes write into the record at any time.
volatile char& stateOf(DomainControllerRecord& record) {
  return record.state;
}

void waitWhileOthersWork(DomainControllerRecord& record) {
  const DWORD start = GetTickCount();
  // The difference of two tick counts is right even where the count has passed its end, after 49.7 days.
  while (stateOf(record) == DomainControllerRecord::kWorking &&
         GetTickCount() - start < kPatienceMilliseconds) {
    QUILLPRESS_TRACE(L"Waiting for domain name cache\n");
    Sleep(kPollMilliseconds);
  }
}

// Kept: a question that finds no controller is an answer too; only a system without the functions is asked
// again (DomainControllerTest.WithoutOneTheNetworkIsNotAskedAgain).
char askForName(DomainControllerRecord& record) {
  const SystemLibrary network(kNetGetDCName.library);
  auto* const getName = network.find(kNetGetDCName);
  auto* const freeName = network.find(kNetApiBufferFree);
  storeName(record, {});
  // Neither without the other: the name is in the network's memory, which only its own function frees.
  if (getName == nullptr || freeName == nullptr) return '\0';
  BYTE* name = nullptr;
  // Null twice: this machine and its own domain.
  if (getName(nullptr, nullptr, &name) == 0 && name != nullptr) {
    storeName(record, reinterpret_cast<const wchar_t*>(name));
    freeName(name);
  }
  return DomainControllerRecord::kReady;
}

// The primary domain controller of this machine, or the empty text. Asking the network may take long, so the
// processes of a session ask once and share the answer; waiting for another's question ends after a minute.
std::wstring domainControllerName() {
  DomainControllerRecord* const shared = sharedRecord();
  if (shared == nullptr) return {};
  DomainControllerRecord& record = *shared;
  waitWhileOthersWork(record);
  const char state = stateOf(record);
  if (state != DomainControllerRecord::kWorking && state != DomainControllerRecord::kReady) {
    QUILLPRESS_TRACE(L"Working out domain controller name\n");
    // Two processes may both get here and ask. They find the same name, so nothing more than the question is
    // lost.
    stateOf(record) = DomainControllerRecord::kWorking;
    stateOf(record) = askForName(record);
  }
  // Without a name the account is looked up on this machine, which knows its own users and those it trusts.
  if (stateOf(record) != DomainControllerRecord::kReady) return {};
  return readName(record).value_or(std::wstring());
}

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

SpoolerIdentity::SpoolerIdentity() {
  if (windowsVersion().is9x()) return;
  spooler_ = SystemLibrary(kRevertToPrinterSelf.library);
  if (!spooler_) {
    // Without the spooler's rights the work is tried all the same; it tells by itself when it fails.
    showSystemErrorBox(L"LoadLibrary spoolss.dll");
    return;
  }
  auto* const revert = spooler_.find(kRevertToPrinterSelf);
  if (revert == nullptr) {
    showSystemErrorBox(L"GetProcAddress RevertToPrinterSelf");
    spooler_ = {};
    return;
  }
  // Null when the thread does not act for a client; then there is nothing to go back to.
  clientToken_ = revert();
}

SpoolerIdentity::~SpoolerIdentity() {
  // Before the library is let go, which holds the function.
  auto* const impersonate = spooler_.find(kImpersonatePrinterClient);
  if (impersonate != nullptr && clientToken_ != nullptr) impersonate(clientToken_);
}
}  // namespace quillpress::driver
