// The security attributes that every named object is made with.

#include <windows.h>
// After windows.h.
#include <sddl.h>

#include <string>
#include <vector>

#include "tests/umpd/kernel/KernelTest.h"
#include "tests/umpd/launcher/support/ObjectSecurity.h"

namespace quillpress::harness {
namespace {

constexpr Attributes kOpenToEverybody{.length = sizeof(SECURITY_ATTRIBUTES),
                                      .isInherited = FALSE,
                                      .hasList = true,
                                      .isListNull = true,
                                      .hasSystemList = false,
                                      .label = std::nullopt,
                                      .labelPolicy = 0};

constexpr Attributes openToLowIntegrity() {
  Attributes attributes = kOpenToEverybody;
  attributes.hasSystemList = true;
  attributes.label = kLowIntegrity;
  attributes.labelPolicy = kNoWriteUp;
  return attributes;
}

class SharedAttributesTest : public KernelByReleaseTest {
 protected:
  [[nodiscard]] static std::optional<Attributes> expected() {
    if (GetParam().is9x()) return std::nullopt;
    return GetParam().major > 5 ? openToLowIntegrity() : kOpenToEverybody;
  }

  void expectAttributesOf(const std::wstring& name) {
    const auto creations = calls.creationsOf(name);
    EXPECT_FALSE(creations.empty()) << ::testing::PrintToString(name);
    for (const KernelCalls::Creation& creation : creations) EXPECT_EQ(creation.attributes, expected());
  }
};

TEST_P(SharedAttributesTest, AreThoseOfTheJobMutex) {
  const Job job(library, printer);
  expectAttributesOf(jobMutex);
}

TEST_P(SharedAttributesTest, AreThoseOfTheAcknowledgeEvent) {
  printToLauncher(releaseChannel);
  expectAttributesOf(releaseChannel.acknowledgeEvent());
}

TEST_P(SharedAttributesTest, AreThoseOfTheLaunchersMemory) {
  printToLauncher(releaseChannel);
  expectAttributesOf(releaseChannel.memory());
}

TEST_P(SharedAttributesTest, AreThoseOfTheControllersMemory) {
  lookForController();
  if (!GetParam().is9x()) expectAttributesOf(controllerCache);
}

TEST_P(SharedAttributesTest, OfTheJobMutexReachTheObject) {
  const Job job(library, printer);
  const Handle mutex(OpenMutexW(READ_CONTROL, FALSE, jobMutex.c_str()));
  ASSERT_NE(mutex, nullptr);
  const ObjectSecurity security = securityOf(mutex.get());
  EXPECT_EQ(security.isListNull, !GetParam().is9x());
  EXPECT_EQ(security.label, GetParam().major > 5 ? std::optional(kLowIntegrity) : std::nullopt);
}

TEST_P(SharedAttributesTest, AreMadeWithTheFunctionsOfTheReleaseOnly) {
  std::vector<std::string> used;
  library.replace("InitializeSecurityDescriptor",
                  [&](PSECURITY_DESCRIPTOR descriptor, DWORD revision) -> BOOL {
                    used.push_back("descriptor");
                    EXPECT_EQ(revision, 1U);
                    return ::InitializeSecurityDescriptor(descriptor, revision);
                  });
  library.replace("ConvertStringSecurityDescriptorToSecurityDescriptorA",
                  [&](LPCSTR text, DWORD revision, PSECURITY_DESCRIPTOR* descriptor, PULONG size) -> BOOL {
                    used.push_back("label");
                    EXPECT_STREQ(text, "S:(ML;;NW;;;LW)");
                    EXPECT_EQ(revision, 1U);
                    return ::ConvertStringSecurityDescriptorToSecurityDescriptorA(text, revision, descriptor,
                                                                                  size);
                  });
  const Job job(library, printer);
  std::vector<std::string> expectedUse;
  if (!GetParam().is9x()) expectedUse.push_back("descriptor");
  if (GetParam().major > 5) expectedUse.push_back("label");
  EXPECT_EQ(used, expectedUse);
}

INSTANTIATE_TEST_SUITE_P(Releases, SharedAttributesTest, ::testing::ValuesIn(kEveryWindows),
                         ::testing::PrintToStringParamName());

class AttributesLifeTest : public KernelTest {};

TEST_F(AttributesLifeTest, TheLabelIsFreedAfterTheObjectIsMade) {
  std::vector<std::string> steps;
  HLOCAL label = nullptr;
  library.replace("ConvertStringSecurityDescriptorToSecurityDescriptorA",
                  [&](LPCSTR text, DWORD revision, PSECURITY_DESCRIPTOR* descriptor, PULONG size) -> BOOL {
                    const BOOL done = ::ConvertStringSecurityDescriptorToSecurityDescriptorA(
                        text, revision, descriptor, size);
                    label = *descriptor;
                    return done;
                  });
  calls.refuseCreation = [&](const std::wstring&) {
    steps.push_back("make");
    return false;
  };
  library.replace("LocalFree", [&](HLOCAL memory) -> HLOCAL {
    if (memory == label) steps.push_back("free");
    return ::LocalFree(memory);
  });
  const Job job(library, printer);
  EXPECT_EQ(steps, (std::vector<std::string>{"make", "free"}));
}

// The functions that may fail, and with what error they do here.
constexpr DWORD kError = ERROR_INVALID_SECURITY_DESCR;

BOOL fail() {
  SetLastError(kError);
  return FALSE;
}

class FailingTest : public KernelTest {
 protected:
  void makeFail(const std::string& function) {
    if (function == "InitializeSecurityDescriptor") {
      library.replace(function, [](PSECURITY_DESCRIPTOR, DWORD) -> BOOL { return fail(); });
    } else if (function == "SetSecurityDescriptorDacl") {
      library.replace(function, [](PSECURITY_DESCRIPTOR, BOOL, PACL, BOOL) -> BOOL { return fail(); });
    } else if (function == "ConvertStringSecurityDescriptorToSecurityDescriptorA") {
      library.replace(function, [](LPCSTR, DWORD, PSECURITY_DESCRIPTOR*, PULONG) -> BOOL { return fail(); });
    } else if (function == "GetSecurityDescriptorSacl") {
      library.replace(function, [](PSECURITY_DESCRIPTOR, LPBOOL, PACL*, LPBOOL) -> BOOL { return fail(); });
    } else {
      ASSERT_EQ(function, "SetSecurityDescriptorSacl");
      library.replace(function, [](PSECURITY_DESCRIPTOR, BOOL, PACL, BOOL) -> BOOL { return fail(); });
    }
  }
};

struct BoxCase {
  const char* function;
  const wchar_t* caption;
};

// Without a descriptor.
class FailingDescriptorTest : public FailingTest, public ::testing::WithParamInterface<BoxCase> {
 protected:
  FailingDescriptorTest() { makeFail(GetParam().function); }

  // One for each object made.
  void expectBoxes() {
    const std::vector<Box> shown = boxes.take();
    EXPECT_EQ(shown.size(), calls.creations().size());
    for (const Box& box : shown) {
      EXPECT_EQ(box.caption, GetParam().caption);
      EXPECT_EQ(box.text, systemMessage(kError));
      EXPECT_TRUE(box.wide);
      EXPECT_EQ(box.owner, nullptr);
      EXPECT_NE(box.style & MB_SERVICE_NOTIFICATION, 0U);
    }
  }
};

TEST_P(FailingDescriptorTest, TheJobMutexIsMadeWithoutAttributes) {
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  ASSERT_EQ(calls.creations().size(), 1U);
  EXPECT_EQ(calls.creations()[0].attributes, std::nullopt);
  expectBoxes();
}

TEST_P(FailingDescriptorTest, EventAndMemoryAreMadeWithoutAttributes) {
  printToLauncher(channel);
  EXPECT_GE(calls.creations().size(), 4U);
  for (const KernelCalls::Creation& creation : calls.creations()) {
    EXPECT_EQ(creation.attributes, std::nullopt) << creation.kind;
  }
  expectBoxes();
}

TEST_P(FailingDescriptorTest, TheControllersMemoryIsMadeWithoutAttributes) {
  lookForController();
  const auto creations = calls.creationsOf(L"Local\\DomainControllerData");
  ASSERT_EQ(creations.size(), 1U);
  EXPECT_EQ(creations[0].attributes, std::nullopt);
  expectBoxes();
}

TEST_P(FailingDescriptorTest, NothingGoesToTheDebugger) {
  const Job job(library, printer);
  EXPECT_EQ(debuggerOutput.takeJoined(), L"");
  expectBoxes();
}

TEST_P(FailingDescriptorTest, OnWindows9xNothingIsAttempted) {
  pretend(library, kWindows98);
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  EXPECT_TRUE(boxes.take().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Functions, FailingDescriptorTest,
    ::testing::Values(BoxCase{"InitializeSecurityDescriptor", L"InitializeSecurityDescriptor failed"},
                      BoxCase{"SetSecurityDescriptorDacl", L"SetSecurityDescriptorDacl failed"}),
    [](const auto& each) { return std::string(each.param.function); });

struct DebuggerCase {
  const char* function;
  const wchar_t* text;
};

// Without the label.
class FailingLabelTest : public FailingTest, public ::testing::WithParamInterface<DebuggerCase> {
 protected:
  FailingLabelTest() { makeFail(GetParam().function); }

  // One for each object made.
  void expectTexts() {
    EXPECT_EQ(debuggerOutput.take(), std::vector<std::wstring>(calls.creations().size(), GetParam().text));
  }
};

TEST_P(FailingLabelTest, TheJobMutexIsMadeForEverybody) {
  const Job job(library, printer);
  EXPECT_NE(job.handle(), 0U);
  ASSERT_EQ(calls.creations().size(), 1U);
  EXPECT_EQ(calls.creations()[0].attributes, kOpenToEverybody);
  expectTexts();
}

TEST_P(FailingLabelTest, EventAndMemoryAreMadeForEverybody) {
  printToLauncher(channel);
  EXPECT_GE(calls.creations().size(), 4U);
  for (const KernelCalls::Creation& creation : calls.creations()) {
    EXPECT_EQ(creation.attributes, kOpenToEverybody) << creation.kind;
  }
  expectTexts();
}

TEST_P(FailingLabelTest, BelowVistaNothingIsAttempted) {
  for (const WindowsRelease& release : {kWindowsNt4, kWindows2000, kWindowsXp}) {
    pretend(library, release);
    const Job job(library, printer);
    EXPECT_NE(job.handle(), 0U);
    EXPECT_EQ(debuggerOutput.takeJoined(), L"") << release;
  }
}

TEST_P(FailingLabelTest, WhatWasParsedIsFreed) {
  HLOCAL label = nullptr;
  bool isFreed = false;
  if (std::string(GetParam().function) == "ConvertStringSecurityDescriptorToSecurityDescriptorA") {
    isFreed = true;  // there is nothing
  } else {
    library.replace("ConvertStringSecurityDescriptorToSecurityDescriptorA",
                    [&](LPCSTR text, DWORD revision, PSECURITY_DESCRIPTOR* descriptor, PULONG size) -> BOOL {
                      const BOOL done = ::ConvertStringSecurityDescriptorToSecurityDescriptorA(
                          text, revision, descriptor, size);
                      label = *descriptor;
                      return done;
                    });
  }
  library.replace("LocalFree", [&](HLOCAL memory) -> HLOCAL {
    if (memory != nullptr && memory == label) isFreed = true;
    return ::LocalFree(memory);
  });
  const Job job(library, printer);
  EXPECT_TRUE(isFreed);
  expectTexts();
}

INSTANTIATE_TEST_SUITE_P(
    Functions, FailingLabelTest,
    ::testing::Values(DebuggerCase{"ConvertStringSecurityDescriptorToSecurityDescriptorA",
                                   L"ConvertStringSecurityDescriptorToSecurityDescriptor failed\n"},
                      DebuggerCase{"GetSecurityDescriptorSacl", L"GetSecurityDescriptorSacl failed\n"},
                      DebuggerCase{"SetSecurityDescriptorSacl", L"SetSecurityDescriptorSacl failed\n"}),
    [](const auto& each) { return std::string(each.param.function); });

}  // namespace
}  // namespace quillpress::harness
