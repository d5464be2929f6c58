#include "tests/umpd/harness/HandleCount.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <vector>

namespace quillpress::harness {
namespace {

// One handle of one process, in the kernel's list of all of them.
struct SystemHandle {
  DWORD process;
  BYTE type;
  BYTE flags;
  WORD value;
  void* object;
  ACCESS_MASK access;
};

using NtQuerySystemInformation = LONG WINAPI(int kind, void* information, ULONG size, ULONG* needed);

constexpr int kSystemHandleInformation = 16;
constexpr LONG kLengthMismatch = static_cast<LONG>(0xC0000004);

std::vector<BYTE> systemHandles() {
  void* function =
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation"));
  std::vector<BYTE> list(1 << 16);
  LONG status = kLengthMismatch;
  while (status == kLengthMismatch) {
    list.resize(2 * list.size());
    ULONG needed = 0;
    status = reinterpret_cast<NtQuerySystemInformation*>(function)(kSystemHandleInformation, list.data(),
                                                                   static_cast<ULONG>(list.size()), &needed);
  }
  EXPECT_EQ(status, 0) << "NtQuerySystemInformation";
  return list;
}

}  // namespace

// Wine answers 0 to GetProcessHandleCount.
unsigned long handleCount() {
  const std::vector<BYTE> list = systemHandles();
  ULONG total = 0;
  std::memcpy(&total, list.data(), sizeof total);
  unsigned long count = 0;
  for (ULONG i = 0; i < total; ++i) {
    SystemHandle handle{};
    std::memcpy(&handle, list.data() + sizeof total + i * sizeof handle, sizeof handle);
    if (handle.process == GetCurrentProcessId()) ++count;
  }
  return count;
}

void expectNoMoreHandlesThan(unsigned long before) {
  for (int tries = 0; tries < 100 && handleCount() > before; ++tries) Sleep(10);
  EXPECT_LE(handleCount(), before);
}

}  // namespace quillpress::harness
