#include "umpd/spooler/DomainController.h"

#include "umpd/rules/DomainControllerRecord.h"
#include "umpd/rules/Text.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/CriticalSection.h"
#include "umpd/win32/SharedSection.h"
#include "umpd/win32/SystemLibrary.h"
#include "umpd/win32/WindowsVersion.h"

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

}  // namespace

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

}  // namespace quillpress::driver
