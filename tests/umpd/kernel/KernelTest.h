#pragma once

#include <array>
#include <string>

#include "tests/umpd/harness/WindowsRelease.h"
#include "tests/umpd/kernel/KernelCalls.h"
#include "tests/umpd/launcher/support/HandOverTest.h"

namespace quillpress::harness {

constexpr DWORD kAllOfMutex = 0x1F0001;

// Jobs whose every named object is noted.
class KernelTest : public HandOverTest {
 protected:
  // A job's mutex, both messages to the launcher with memory that the library makes.
  void printToLauncher(const Channel& to) {
    Peer::Options options;
    options.memory = false;
    const Peer peer(to, options);
    print(L"Document");
    EXPECT_EQ(peer.records().size(), 2U);
  }

  // A job of a system that finds the user's registry by way of the domain controller.
  void lookForController() {
    byName.makeAbsent("RegOpenCurrentUser");
    const Job job(library, printer);
    EXPECT_NE(job.handle(), 0U);
  }

  // What the system says of an error.
  static std::wstring systemMessage(DWORD error) {
    std::array<wchar_t, 1024> text{};
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text.data(),
                   static_cast<DWORD>(text.size()), nullptr);
    return text.data();
  }

  KernelCalls calls{library};
};

// The same on a Windows release, with the names that objects have there.
class KernelByReleaseTest : public KernelTest, public ::testing::WithParamInterface<WindowsRelease> {
 protected:
  KernelByReleaseTest() { pretend(library, GetParam()); }

  [[nodiscard]] static bool hasNamespaces() { return GetParam().major >= 5; }
  [[nodiscard]] static std::wstring sessionPrefix() { return hasNamespaces() ? L"Local\\" : L""; }

  const std::wstring jobMutex = std::wstring(hasNamespaces() ? L"Global\\" : L"") + L"umdriver";
  const std::wstring controllerCache = sessionPrefix() + L"DomainControllerData";
  const Channel releaseChannel = channelOf(user, hasNamespaces());
};

}  // namespace quillpress::harness
