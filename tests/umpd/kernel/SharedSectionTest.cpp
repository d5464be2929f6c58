// Memory that the library shares with the launcher.

#include <vector>

#include "tests/umpd/harness/HandleCount.h"
#include "tests/umpd/kernel/KernelTest.h"

namespace quillpress::harness {
namespace {

class SharedSectionTest : public KernelTest {};

TEST_F(SharedSectionTest, IsMappedWholeForReadingAndWriting) {
  struct Mapping {
    DWORD access;
    ULONGLONG offset;
    SIZE_T size;
  };
  std::vector<Mapping> mappings;
  library.replace("MapViewOfFile",
                  [&](HANDLE section, DWORD access, DWORD high, DWORD low, SIZE_T size) -> LPVOID {
                    mappings.push_back({access, (ULONGLONG{high} << 32) | low, size});
                    return ::MapViewOfFile(section, access, high, low, size);
                  });
  printToLauncher(channel);
  ASSERT_FALSE(mappings.empty());
  for (const Mapping& mapping : mappings) {
    EXPECT_NE(mapping.access & FILE_MAP_WRITE, 0U);
    EXPECT_EQ(mapping.offset, 0U);
    EXPECT_TRUE(mapping.size == 0 || mapping.size >= 1303) << mapping.size;
  }
}

TEST_F(SharedSectionTest, ThatCannotBeMappedSendsNothingAndTheJobGoesOn) {
  const Peer peer(channel);
  library.replace("MapViewOfFile", [](HANDLE, DWORD, DWORD, DWORD, SIZE_T) -> LPVOID { return nullptr; });
  print(L"Document");
  EXPECT_TRUE(peer.records().empty());
  EXPECT_TRUE(calls.creationsOf(channel.acknowledgeEvent()).empty());
  EXPECT_TRUE(calls.openingsOf(channel.requestEvent()).empty());
  EXPECT_TRUE(fileExists(folder.file(L"Document.pdf")));
}

TEST_F(SharedSectionTest, ThatCannotBeMappedIsClosed) {
  Peer::Options options;
  options.memory = false;
  const Peer peer(channel, options);
  library.replace("MapViewOfFile", [](HANDLE, DWORD, DWORD, DWORD, SIZE_T) -> LPVOID { return nullptr; });
  const Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("%!PS"), 1);
  EXPECT_EQ(calls.creationsOf(channel.memory()).size(), 1U);
  EXPECT_EQ(Handle(OpenFileMappingW(FILE_MAP_READ, FALSE, channel.memory().c_str())), nullptr);
}

TEST_F(SharedSectionTest, ThatCannotBeMadeSendsNothingAndTheJobGoesOn) {
  Peer::Options options;
  options.memory = false;
  const Peer peer(channel, options);
  calls.refuseCreation = [this](const std::wstring& name) { return name == channel.memory(); };
  print(L"Document");
  EXPECT_TRUE(peer.records().empty());
  EXPECT_TRUE(fileExists(folder.file(L"Document.pdf")));
}

TEST_F(SharedSectionTest, IsUnmappedAfterTheMessage) {
  std::vector<LPCVOID> mapped;
  std::vector<LPCVOID> unmapped;
  library.replace("MapViewOfFile",
                  [&](HANDLE section, DWORD access, DWORD high, DWORD low, SIZE_T size) -> LPVOID {
                    void* const view = ::MapViewOfFile(section, access, high, low, size);
                    mapped.push_back(view);
                    return view;
                  });
  library.replace("UnmapViewOfFile", [&](LPCVOID view) -> BOOL {
    unmapped.push_back(view);
    return ::UnmapViewOfFile(view);
  });
  printToLauncher(channel);
  EXPECT_EQ(mapped.size(), 2U);
  EXPECT_EQ(unmapped, mapped);
}

TEST_F(SharedSectionTest, WithAllOtherObjectsIsClosedAfterAJob) {
  const Peer peer(channel);
  const auto printSeveral = [this] {
    for (int i = 0; i < 5; ++i) print(L"Document");
  };
  printSeveral();
  const unsigned long before = handleCount();
  printSeveral();
  expectNoMoreHandlesThan(before);
}

}  // namespace
}  // namespace quillpress::harness
