#include <vector>

#include "tests/umpd/launcher/support/ObjectSecurity.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/win32/NamedObjects.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {

// A list that is present but null.
bool isOpenToEverybody(HANDLE object) {
  return harness::securityOf(object).isListNull;
}

// The label of the low level, without write-up.
bool hasLowLabel(HANDLE object) {
  const harness::ObjectSecurity security = harness::securityOf(object);
  if (!security.label) return false;
  EXPECT_EQ(security.label, harness::kLowIntegrity);
  EXPECT_EQ(security.labelPolicy, harness::kNoWriteUp);
  return true;
}

class SecurityAttributesTest : public classes::ClassTest {
 protected:
  // An object made with the attributes as they are now.
  static KernelHandle makeObject() {
    SecurityAttributes security;
    return KernelHandle(CreateEventW(security.get(), FALSE, FALSE, classes::newObjectName().c_str()));
  }

  // The box that explains the error.
  static std::vector<std::wstring> box(const std::wstring& caption, DWORD error) {
    return {L"[" + caption + L"] " + systemMessage(error)};
  }
};

TEST_F(SecurityAttributesTest, AreNoneOnThe9xFamily) {
  pretend(harness::kWindows98);
  EXPECT_EQ(SecurityAttributes().get(), nullptr);
}

TEST_F(SecurityAttributesTest, LetEverybodyIn) {
  for (const harness::WindowsRelease& release : harness::kEveryWindows) {
    if (release.is9x()) continue;
    pretend(release);
    const KernelHandle object = makeObject();
    EXPECT_TRUE(isOpenToEverybody(object.get())) << release;
  }
}

TEST_F(SecurityAttributesTest, CarryTheLowLabelWhereThereAreLabels) {
  for (const harness::WindowsRelease& release : harness::kEveryWindows) {
    if (release.is9x()) continue;
    pretend(release);
    const KernelHandle object = makeObject();
    EXPECT_EQ(hasLowLabel(object.get()), release.major > 5) << release;
  }
}

TEST_F(SecurityAttributesTest, AreNotInherited) {
  SecurityAttributes security;
  ASSERT_NE(security.get(), nullptr);
  EXPECT_EQ(security.get()->nLength, sizeof(SECURITY_ATTRIBUTES));
  EXPECT_EQ(security.get()->bInheritHandle, FALSE);
}

TEST_F(SecurityAttributesTest, AreThoseOfEventsMutexesAndSections) {
  const std::wstring eventName = classes::newObjectName();
  const std::wstring mutexName = classes::newObjectName();
  const std::wstring sectionName = classes::newObjectName();
  NamedEvent event(eventName);
  NamedMutex mutex(mutexName);
  SharedSection section(sectionName, 100);
  ASSERT_TRUE(event.create());
  ASSERT_TRUE(mutex.create());
  ASSERT_TRUE(section.openOrCreate());
  const KernelHandle objects[] = {
      KernelHandle(OpenEventW(EVENT_ALL_ACCESS, FALSE, eventName.c_str())),
      KernelHandle(OpenMutexW(MUTEX_ALL_ACCESS, FALSE, mutexName.c_str())),
      KernelHandle(OpenFileMappingW(FILE_MAP_ALL_ACCESS | READ_CONTROL, FALSE, sectionName.c_str()))};
  for (const KernelHandle& object : objects) {
    EXPECT_TRUE(isOpenToEverybody(object.get()));
    EXPECT_TRUE(hasLowLabel(object.get()));
  }
}

TEST_F(SecurityAttributesTest, ADescriptorThatCannotBeMadeIsShownAndLeftOut) {
  FAIL_EVERY(imports, InitializeSecurityDescriptor, FALSE, ERROR_UNKNOWN_REVISION);
  SecurityAttributes security;
  EXPECT_EQ(security.get(), nullptr);
  EXPECT_EQ(takeBoxes(), box(L"InitializeSecurityDescriptor failed", ERROR_UNKNOWN_REVISION));
}

TEST_F(SecurityAttributesTest, SoIsOneThatDoesNotTakeTheList) {
  FAIL_EVERY(imports, SetSecurityDescriptorDacl, FALSE, ERROR_INVALID_SECURITY_DESCR);
  SecurityAttributes security;
  EXPECT_EQ(security.get(), nullptr);
  EXPECT_EQ(takeBoxes(), box(L"SetSecurityDescriptorDacl failed", ERROR_INVALID_SECURITY_DESCR));
}

TEST_F(SecurityAttributesTest, ALabelThatCannotBeParsedIsLeftOut) {
  std::string parsed;
  imports.replace("ConvertStringSecurityDescriptorToSecurityDescriptorA",
                  [&](LPCSTR text, DWORD revision, PSECURITY_DESCRIPTOR*, PULONG) -> BOOL {
                    parsed = text;
                    EXPECT_EQ(revision, 1U);
                    return FALSE;
                  });
  const KernelHandle object = makeObject();
  EXPECT_EQ(parsed, "S:(ML;;NW;;;LW)");
  EXPECT_EQ(takeDebuggerOutput(), L"ConvertStringSecurityDescriptorToSecurityDescriptor failed\n");
  EXPECT_TRUE(isOpenToEverybody(object.get()));
  EXPECT_FALSE(hasLowLabel(object.get()));
}

TEST_F(SecurityAttributesTest, SoIsOneWhoseListCannotBeRead) {
  imports.replace("GetSecurityDescriptorSacl",
                  [](PSECURITY_DESCRIPTOR, LPBOOL, PACL*, LPBOOL) -> BOOL { return FALSE; });
  const KernelHandle object = makeObject();
  imports.restore("GetSecurityDescriptorSacl");
  EXPECT_EQ(takeDebuggerOutput(), L"GetSecurityDescriptorSacl failed\n");
  EXPECT_TRUE(isOpenToEverybody(object.get()));
  EXPECT_FALSE(hasLowLabel(object.get()));
}

TEST_F(SecurityAttributesTest, SoIsOneThatTheDescriptorDoesNotTake) {
  imports.replace("SetSecurityDescriptorSacl",
                  [](PSECURITY_DESCRIPTOR, BOOL, PACL, BOOL) -> BOOL { return FALSE; });
  const KernelHandle object = makeObject();
  EXPECT_EQ(takeDebuggerOutput(), L"SetSecurityDescriptorSacl failed\n");
  EXPECT_TRUE(isOpenToEverybody(object.get()));
  EXPECT_FALSE(hasLowLabel(object.get()));
}

TEST_F(SecurityAttributesTest, TheParsedLabelIsFreed) {
  void* label = nullptr;
  auto* const parse = classes::real<BOOL WINAPI(LPCSTR, DWORD, PSECURITY_DESCRIPTOR*, PULONG)>(
      L"advapi32.dll", "ConvertStringSecurityDescriptorToSecurityDescriptorA");
  imports.replace("ConvertStringSecurityDescriptorToSecurityDescriptorA",
                  [&](LPCSTR text, DWORD revision, PSECURITY_DESCRIPTOR* result, PULONG size) -> BOOL {
                    const BOOL parsed = parse(text, revision, result, size);
                    label = *result;
                    return parsed;
                  });
  auto* const release = classes::real<decltype(LocalFree)>(L"kernel32.dll", "LocalFree");
  std::vector<void*> freed;
  imports.replace("LocalFree", [&](HLOCAL memory) -> HLOCAL {
    freed.push_back(memory);
    return release(memory);
  });
  { const SecurityAttributes security; }
  EXPECT_NE(label, nullptr);
  EXPECT_EQ(freed, std::vector<void*>{label});
}

}  // namespace
}  // namespace quillpress::driver
