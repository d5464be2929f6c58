// Files that exist are left alone: the path gets a number.

#include <set>
#include <string>
#include <vector>

#include "tests/umpd/output/NamingTest.h"

namespace quillpress::harness {
namespace {

class NumberingTest : public NamingTest {
 protected:
  // The library finds a file at the first `count` paths that it looks at.
  void occupyPaths(std::size_t count) {
    library.replace("GetFileAttributesW", [=, this](LPCWSTR path) -> DWORD {
      paths.emplace_back(path);
      if (paths.size() <= count) return FILE_ATTRIBUTE_NORMAL;
      SetLastError(ERROR_FILE_NOT_FOUND);
      return INVALID_FILE_ATTRIBUTES;
    });
  }

  std::vector<std::wstring> paths;
};

TEST_F(NumberingTest, GoesBeforeTheExtension) {
  writeFile(inFolder(L"Report.pdf"), "older");
  EXPECT_PRED3(isNumbered, place(L"Report"), inFolder(L"Report."), L".pdf");
  EXPECT_EQ(readFile(inFolder(L"Report.pdf")), "older");
}

TEST_F(NumberingTest, IsNotNeededForANewFile) {
  writeFile(inFolder(L"Another.pdf"), "older");
  EXPECT_EQ(place(L"Report"), inFolder(L"Report.pdf"));
}

TEST_F(NumberingTest, EndsInPdfWhateverTheExtension) {
  setExtension(L".ps");
  writeFile(inFolder(L"Report.ps"), "older");
  EXPECT_PRED3(isNumbered, place(L"Report"), inFolder(L"Report."), L".pdf");
}

TEST_F(NumberingTest, EndsInPdfForTheDefaultNameToo) {
  setAction(1);
  setDefaultName(L"log.txt");
  EXPECT_EQ(place(L""), inFolder(L"log.txt"));
  EXPECT_PRED3(isNumbered, place(L""), inFolder(L"log."), L".pdf");
}

TEST_F(NumberingTest, TellsManyJobsApart) {
  std::set<std::wstring> places;
  for (int i = 0; i < 30; ++i) places.insert(place(L"Report"));
  EXPECT_EQ(places.size(), 30U);
  EXPECT_EQ(folder.files().size(), 30U);
}

TEST_F(NumberingTest, GoesOnBehindANumberThatIsTaken) {
  occupyPaths(3);
  choose(L"Report");
  ASSERT_EQ(paths.size(), 4U);
  EXPECT_EQ(paths[0], inFolder(L"Report.pdf"));
  for (std::size_t i = 1; i < paths.size(); ++i) {
    const std::wstring before = paths[i - 1].substr(0, paths[i - 1].rfind(L'.') + 1);
    EXPECT_PRED3(isNumbered, paths[i], before, L".pdf");
  }
}

TEST_F(NumberingTest, TakesTheFirstPathThatIsFree) {
  occupyPaths(2);
  const std::wstring path = place(L"Report");
  ASSERT_EQ(paths.size(), 3U);
  EXPECT_EQ(path, paths[2]);
}

TEST_F(NumberingTest, CountsAFolderInTheWayAsTaken) {
  CreateDirectoryW(inFolder(L"Report.pdf").c_str(), nullptr);
  EXPECT_PRED3(isNumbered, place(L"Report"), inFolder(L"Report."), L".pdf");
}

TEST_F(NumberingTest, NeedsADot) {
  setExtension(L"x");
  writeFile(inFolder(L"Reportx"), "older");
  expectNoPath(L"Report");
  EXPECT_EQ(readFile(inFolder(L"Reportx")), "older");
}

TEST_F(NumberingTest, TakesTheDotOfAFolderWhenTheNameHasNone) {
  setFolder(inFolder(L"v1.2"));
  setExtension(L"x");
  EXPECT_EQ(place(L"Report"), inFolder(L"v1.2\\Reportx"));
  EXPECT_PRED3(isNumbered, place(L"Report"), inFolder(L"v1."), L".pdf");
}

class RandomNameTest : public NumberingTest {
 protected:
  RandomNameTest() {
    setAction(4);
    setExtension(L".out");
  }
};

TEST_F(RandomNameTest, DiffersFromJobToJob) {
  std::set<std::wstring> places;
  for (int i = 0; i < 30; ++i) places.insert(place(L"Report"));
  EXPECT_EQ(places.size(), 30U);
  for (const std::wstring& each : places) EXPECT_PRED3(isNumbered, each, inFolder(L""), L".out");
}

TEST_F(RandomNameTest, IsTheFirstOneThatIsFree) {
  occupyPaths(3);
  const std::wstring path = place(L"Report");
  // Once chosen, it is looked at like any other path.
  ASSERT_EQ(paths.size(), 5U);
  EXPECT_EQ(path, paths[3]);
  EXPECT_EQ(path, paths[4]);
  for (const std::wstring& each : paths) EXPECT_PRED3(isNumbered, each, inFolder(L""), L".out");
}

TEST_F(RandomNameTest, IsTriedElevenTimes) {
  occupyPaths(12);
  choose(L"Report");
  // Eleven names, the last of them looked at again, and then a number behind it.
  ASSERT_EQ(paths.size(), 13U);
  for (std::size_t i = 0; i < 11; ++i) EXPECT_PRED3(isNumbered, paths[i], inFolder(L""), L".out");
  EXPECT_EQ(std::set<std::wstring>(paths.begin(), paths.begin() + 11).size(), 11U);
  EXPECT_EQ(paths[11], paths[10]);
  EXPECT_PRED3(isNumbered, paths[12], paths[10].substr(0, paths[10].size() - 3), L".pdf");
}

TEST_F(RandomNameTest, MayStandWithoutAFolder) {
  setFolder(L"");
  EXPECT_PRED3(isNumbered, place(L"Report"), L"", L".out");
}

}  // namespace
}  // namespace quillpress::harness
