#include <algorithm>
#include <array>

#include "tests/umpd/harness/FreshProcess.h"
#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/win32/NamedObjects.h"

namespace quillpress::driver {
namespace {

constexpr std::size_t kSize = 1303;
constexpr DWORD kPage = 4096;

class SharedSectionTest : public classes::ClassTest {
 protected:
  [[nodiscard]] KernelHandle makeByOthers(DWORD protection, DWORD size) const {
    return KernelHandle(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, protection, 0, size, name.c_str()));
  }

  [[nodiscard]] bool isThere() const {
    return static_cast<bool>(KernelHandle(OpenFileMappingW(FILE_MAP_READ, FALSE, name.c_str())));
  }

  const std::wstring name = classes::newObjectName();
};

TEST_F(SharedSectionTest, IsMadeZeroedByTheFirst) {
  SharedSection section(name, kSize);
  EXPECT_FALSE(section.isOpen());
  ASSERT_TRUE(section.openOrCreate());
  EXPECT_TRUE(section.isOpen());
  ASSERT_EQ(section.bytes().size(), kSize);
  EXPECT_TRUE(std::all_of(section.bytes().begin(), section.bytes().end(),
                          [](std::byte each) { return each == std::byte{0}; }));
}

TEST_F(SharedSectionTest, IsSharedWithAllOthers) {
  SharedSection first(name, kSize);
  ASSERT_TRUE(first.openOrCreate());
  first.bytes().front() = std::byte{1};
  SharedSection second(name, kSize);
  ASSERT_TRUE(second.openOrCreate());
  EXPECT_EQ(second.bytes().front(), std::byte{1});
  second.bytes().back() = std::byte{2};
  EXPECT_EQ(first.bytes().back(), std::byte{2});
}

// The same test runs in both processes: this one makes the section, the other finds it.
TEST_F(SharedSectionTest, IsSharedBetweenProcesses) {
  SharedSection section(L"QuillpressClasses.BetweenProcesses", kSize);
  ASSERT_TRUE(section.openOrCreate());
  const bool isFirst = section.bytes()[7] == std::byte{0};
  if (isFirst) section.bytes()[7] = std::byte{42};
  harness::inFreshProcess([&] {
    EXPECT_FALSE(isFirst);
    EXPECT_EQ(section.bytes()[7], std::byte{42});
    section.bytes()[kSize - 1] = std::byte{43};
  });
  EXPECT_EQ(section.bytes()[kSize - 1], std::byte{43});
}

TEST_F(SharedSectionTest, IsOpenedOnce) {
  SharedSection section(name, kSize);
  ASSERT_TRUE(section.openOrCreate());
  const std::byte* const view = section.bytes().data();
  EXPECT_TRUE(section.openOrCreate());
  EXPECT_EQ(section.bytes().data(), view);
}

TEST_F(SharedSectionTest, GoesWithItsLastOwner) {
  {
    SharedSection section(name, kSize);
    ASSERT_TRUE(section.openOrCreate());
    EXPECT_TRUE(isThere());
  }
  EXPECT_FALSE(isThere());
}

TEST_F(SharedSectionTest, LiesInThePagingFile) {
  auto* const make = classes::real<decltype(CreateFileMappingW)>(L"kernel32.dll", "CreateFileMappingW");
  int count = 0;
  imports.replace("CreateFileMappingW",
                  [&](HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection, DWORD high, DWORD low,
                      LPCWSTR objectName) -> HANDLE {
                    ++count;
                    EXPECT_EQ(file, INVALID_HANDLE_VALUE);
                    EXPECT_NE(security, nullptr);
                    EXPECT_EQ(protection, static_cast<DWORD>(PAGE_READWRITE));
                    EXPECT_EQ(high, 0U);
                    EXPECT_EQ(low, kSize);
                    EXPECT_EQ(objectName, name);
                    return make(file, security, protection, high, low, objectName);
                  });
  SharedSection section(name, kSize);
  EXPECT_TRUE(section.openOrCreate());
  SharedSection second(name, kSize);
  EXPECT_TRUE(second.openOrCreate());
  EXPECT_EQ(count, 1);
}

TEST_F(SharedSectionTest, OneMadeByOthersIsUsed) {
  const KernelHandle others = makeByOthers(PAGE_READWRITE, kPage);
  SharedSection section(name, kSize);
  EXPECT_TRUE(section.openOrCreate());
}

// Another process was faster between opening and making.
TEST_F(SharedSectionTest, OneThatAppearsMeanwhileIsUsed) {
  const KernelHandle others = makeByOthers(PAGE_READWRITE, kPage);
  FAIL_EVERY(imports, OpenFileMappingW, nullptr, ERROR_FILE_NOT_FOUND);
  SharedSection section(name, kSize);
  EXPECT_TRUE(section.openOrCreate());
}

TEST_F(SharedSectionTest, AnotherKindOfObjectIsNoSection) {
  const KernelHandle event(CreateEventW(nullptr, FALSE, FALSE, name.c_str()));
  SharedSection section(name, kSize);
  EXPECT_FALSE(section.openOrCreate());
  EXPECT_FALSE(section.isOpen());
}

TEST_F(SharedSectionTest, OneThatIsTooSmallIsNotUsed) {
  const KernelHandle others = makeByOthers(PAGE_READWRITE, kPage);
  SharedSection section(name, kPage + 1);
  EXPECT_FALSE(section.openOrCreate());
  EXPECT_FALSE(section.isOpen());
  SharedSection fitting(name, kPage);
  EXPECT_TRUE(fitting.openOrCreate());
}

// Touching memory that has no pages yet would end the printing process.
TEST_F(SharedSectionTest, OneThatIsOnlyReservedIsNotUsed) {
  const KernelHandle others = makeByOthers(PAGE_READWRITE | SEC_RESERVE, 16 * kPage);
  ASSERT_TRUE(others);
  SharedSection section(name, kSize);
  EXPECT_FALSE(section.openOrCreate());
  EXPECT_FALSE(section.isOpen());
}

// Its view can be asked for with all rights, and the first byte written into it would end the process.
TEST_F(SharedSectionTest, OneOfAProgramsImageIsNotUsed) {
  std::array<wchar_t, MAX_PATH> program{};
  ASSERT_NE(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())), 0U);
  const FileHandle file(
      CreateFileW(program.data(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(file);
  const KernelHandle image(
      CreateFileMappingW(file.get(), nullptr, PAGE_READONLY | SEC_IMAGE, 0, 0, name.c_str()));
  ASSERT_TRUE(image);
  SharedSection section(name, kSize);
  EXPECT_FALSE(section.openOrCreate());
  EXPECT_FALSE(section.isOpen());
}

TEST_F(SharedSectionTest, AFailedMappingClosesTheSection) {
  imports.replace("MapViewOfFile", [](HANDLE, DWORD, DWORD, DWORD, SIZE_T) -> LPVOID { return nullptr; });
  SharedSection section(name, kSize);
  EXPECT_FALSE(section.openOrCreate());
  EXPECT_FALSE(section.isOpen());
  EXPECT_FALSE(isThere());
}

TEST_F(SharedSectionTest, IsTriedAgainAfterAFailure) {
  SharedSection section(name, kSize);
  {
    const KernelHandle event(CreateEventW(nullptr, FALSE, FALSE, name.c_str()));
    EXPECT_FALSE(section.openOrCreate());
  }
  EXPECT_TRUE(section.openOrCreate());
}

}  // namespace
}  // namespace quillpress::driver
