#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "umpd/rules/OutputPath.h"

namespace quillpress::driver {
namespace {

constexpr std::size_t kSize = 780;

// A world in which the first `taken` paths asked for exist, and in which random numbers count from 1 on.
struct World {
  std::size_t taken = 0;
  bool areFolders = false;  // what exists
  std::vector<std::wstring> asked;
  int numbers = 0;

  NamingWorld view() {
    return {[this](const std::wstring& path) {
              asked.push_back(path);
              return asked.size() <= taken;
            },
            [this](const std::wstring&) { return areFolders; }, [this] { return ++numbers; }};
  }
};

NamingRules rulesFor(int action) {
  NamingRules rules;
  rules.action = action;
  rules.folder = L"C:\\Out";
  rules.defaultName = L"tmp.pdf";
  return rules;
}

std::wstring chosen(const NamingRules& rules, std::wstring_view documentName,
                    std::size_t bufferSize = kSize) {
  World world;
  return chooseOutputPath(rules, documentName, bufferSize, world.view());
}

constexpr int kDocumentActions[] = {0, 2, 3, 5};

TEST(OutputNameTest, TheRulesHaveTheirDefaults) {
  const NamingRules rules;
  EXPECT_EQ(rules.action, 0);
  EXPECT_EQ(rules.trimCharacter, L'-');
  EXPECT_EQ(rules.extension, L".pdf");
  EXPECT_EQ(rules.folder, L"");
}

TEST(OutputNameTest, FourActionsTakeTheDocumentsName) {
  for (const int action : kDocumentActions) {
    EXPECT_EQ(chosen(rulesFor(action), L"Microsoft Word - Report.doc"), L"C:\\Out\\Report.pdf") << action;
  }
}

TEST(OutputNameTest, WithoutDocumentNameTheyTakeTheDefaultOne) {
  for (const int action : kDocumentActions) {
    NamingRules rules = rulesFor(action);
    rules.defaultName = L"App - My:name.txt";
    EXPECT_EQ(chosen(rules, L""), L"C:\\Out\\My_name.pdf") << action;
  }
}

TEST(OutputNameTest, WithoutAnyNameTheyTakeARandomOne) {
  for (const int action : kDocumentActions) {
    NamingRules rules = rulesFor(action);
    rules.defaultName = L"";
    EXPECT_EQ(chosen(rules, L""), L"C:\\Out\\1.pdf") << action;
  }
}

TEST(OutputNameTest, ActionOneTakesTheDefaultNameUnchanged) {
  NamingRules rules = rulesFor(1);
  rules.defaultName = L"App - a:b.txt";
  EXPECT_EQ(chosen(rules, L"Report.doc"), L"C:\\Out\\App - a:b.txt");
  rules.defaultName = L"";
  EXPECT_EQ(chosen(rules, L"Report.doc"), L"C:\\Out\\");
}

TEST(OutputNameTest, ActionFourTakesARandomNumber) {
  EXPECT_EQ(chosen(rulesFor(4), L"Report.doc"), L"C:\\Out\\1.pdf");
  NamingRules rules = rulesFor(4);
  rules.extension = L".prn";
  rules.folder = L"";
  EXPECT_EQ(chosen(rules, L"Report.doc"), L"1.prn");
}

TEST(OutputNameTest, AllOtherActionsTakeNoName) {
  for (const int action : {6, 7, 100, std::numeric_limits<int>::max(), -1, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(chosen(rulesFor(action), L"Report.doc"), L"C:\\Out\\") << action;
  }
}

TEST(OutputNameTest, TheFolderGetsASeparatorUnlessItHasOne) {
  NamingRules rules = rulesFor(3);
  for (const wchar_t* folder : {L"C:\\Out", L"C:\\Out\\"}) {
    rules.folder = folder;
    EXPECT_EQ(chosen(rules, L"a"), L"C:\\Out\\a.pdf");
  }
  rules.folder = L"C:/Out/";
  EXPECT_EQ(chosen(rules, L"a"), L"C:/Out/a.pdf");
  rules.folder = L"C:";
  EXPECT_EQ(chosen(rules, L"a"), L"C:\\a.pdf");
  rules.folder = L"";
  EXPECT_EQ(chosen(rules, L"a"), L"a.pdf");
}

// A path of up to 260 characters is not shortened, so the folder shows.
TEST(OutputNameTest, TheFolderMustBeShorterThanTheBufferLessOne) {
  NamingRules rules = rulesFor(6);
  rules.folder = std::wstring(98, L'f');
  EXPECT_EQ(chosen(rules, L"", 100), rules.folder + L"\\");
  rules.folder = std::wstring(99, L'f');
  EXPECT_EQ(chosen(rules, L"", 100), L"");
}

TEST(OutputNameTest, ActionOneGivesTheFolderWhatTheNameLeaves) {
  NamingRules rules = rulesFor(1);
  rules.defaultName = std::wstring(50, L'n');
  rules.folder = std::wstring(48, L'f');
  EXPECT_EQ(chosen(rules, L"", 100), rules.folder + L"\\" + rules.defaultName);
  rules.folder = std::wstring(49, L'f');
  EXPECT_EQ(chosen(rules, L"", 100), rules.defaultName);
}

TEST(OutputNameTest, ActionOneNeverLeavesTheBuffer) {
  NamingRules rules = rulesFor(1);
  rules.folder = L"C:\\Out";
  for (const std::size_t length : {98U, 99U, 100U, 101U, 200U}) {
    rules.defaultName = std::wstring(length, L'n');
    const std::wstring path = chosen(rules, L"", 100);
    EXPECT_EQ(path, std::wstring(std::min<std::size_t>(length, 99), L'n')) << length;
  }
}

TEST(OutputNameTest, TheDocumentsNameIsCutToWhatTheFolderLeaves) {
  NamingRules rules = rulesFor(3);
  // "C:\Out\" and ".pdf" leave 88 of 100 characters, the final zero counted.
  EXPECT_EQ(chosen(rules, std::wstring(88, L'n'), 100), L"C:\\Out\\" + std::wstring(88, L'n') + L".pdf");
  EXPECT_EQ(chosen(rules, std::wstring(89, L'n'), 100), L"C:\\Out\\" + std::wstring(88, L'n') + L".pdf");
  EXPECT_EQ(chosen(rules, std::wstring(500, L'n'), 100), L"C:\\Out\\" + std::wstring(88, L'n') + L".pdf");
}

TEST(OutputNameTest, NoRoomForANameStaysWithinTheBuffer) {
  NamingRules rules = rulesFor(3);
  rules.folder = std::wstring(98, L'f');
  const std::wstring path = chosen(rules, L"Report", 100);
  EXPECT_LT(path.size(), 100U);
  EXPECT_TRUE(path.starts_with(rules.folder));
}

TEST(OutputNameTest, RandomNamesAreTriedUntilOneIsFree) {
  World world;
  world.taken = 3;
  EXPECT_EQ(chooseOutputPath(rulesFor(4), L"", kSize, world.view()), L"C:\\Out\\4.pdf");
  EXPECT_EQ(world.asked, (std::vector<std::wstring>{L"C:\\Out\\1.pdf", L"C:\\Out\\2.pdf", L"C:\\Out\\3.pdf",
                                                    L"C:\\Out\\4.pdf"}));
}

TEST(OutputNameTest, ThereAreElevenAttempts) {
  for (const std::size_t taken : {10U, 11U, 1000U}) {
    World world;
    world.taken = taken;
    EXPECT_EQ(chooseOutputPath(rulesFor(4), L"", kSize, world.view()), L"C:\\Out\\11.pdf") << taken;
    EXPECT_EQ(world.numbers, 11) << taken;
  }
}

TEST(OutputNameTest, NamesThatAreNotRandomAreNotLookedFor) {
  for (const int action : {0, 1, 2, 3, 5, 6}) {
    World world;
    world.taken = 1000;
    chooseOutputPath(rulesFor(action), L"Report", kSize, world.view());
    EXPECT_TRUE(world.asked.empty()) << action;
    EXPECT_EQ(world.numbers, 0) << action;
  }
}

TEST(OutputNameTest, EscapesInTheNameAreDecoded) {
  EXPECT_EQ(chosen(rulesFor(3), L"a%41%20b"), L"C:\\Out\\aA b.pdf");
  NamingRules rules = rulesFor(1);
  rules.defaultName = L"a+b%3A.pdf";
  EXPECT_EQ(chosen(rules, L""), L"C:\\Out\\a b_.pdf");
}

TEST(OutputNameTest, SoAreThoseInTheFolder) {
  NamingRules rules = rulesFor(6);
  rules.folder = L"C:\\My+folder%41";
  EXPECT_EQ(chosen(rules, L""), L"C:\\My folderA\\");
}

TEST(OutputNameTest, AnEscapeWithoutDigitsEndsThePath) {
  EXPECT_EQ(chosen(rulesFor(3), L"a%zzb"), L"C:\\Out\\a");
  // The extension is part of what is decoded.
  EXPECT_EQ(chosen(rulesFor(3), L"100%"), L"C:\\Out\\100");
  EXPECT_EQ(chosen(rulesFor(3), L"100% "), L"C:\\Out\\100");
  EXPECT_EQ(chosen(rulesFor(3), L"100%a"), L"C:\\Out\\100_pdf");
}

TEST(OutputNameTest, PathsAreKeptWithin260Characters) {
  EXPECT_EQ(chosen(rulesFor(3), std::wstring(249, L'n')).size(), 260U);
  EXPECT_EQ(chosen(rulesFor(3), std::wstring(250, L'n')), L"C:\\Out\\" + std::wstring(248, L'n') + L".pdf");
  EXPECT_EQ(chosen(rulesFor(3), std::wstring(259, L'n')), L"C:\\Out\\" + std::wstring(248, L'n') + L".pdf");
}

TEST(OutputNameTest, APathIsMeasuredAfterDecoding) {
  NamingRules rules = rulesFor(1);
  rules.defaultName.clear();
  for (int i = 0; i < 100; ++i) rules.defaultName += L"%41";
  EXPECT_EQ(chosen(rules, L""), L"C:\\Out\\" + std::wstring(100, L'A'));
}

TEST(OutputNameTest, ALongFolderIsDropped) {
  NamingRules rules = rulesFor(3);
  rules.folder = L"C:\\" + std::wstring(400, L'f');
  EXPECT_EQ(chosen(rules, L"Report.doc"), L"C:\\Report.pdf");
}

std::optional<std::wstring> unique(World& world, const std::wstring& path, std::size_t bufferSize = kSize,
                                   int action = 3) {
  return uniquePath(rulesFor(action), path, bufferSize, world.view());
}

TEST(OutputNameTest, AFreePathStays) {
  World world;
  EXPECT_EQ(unique(world, L"C:\\Out\\Report.pdf"), L"C:\\Out\\Report.pdf");
  EXPECT_EQ(unique(world, L"C:\\Out\\Report"), L"C:\\Out\\Report");
  EXPECT_EQ(world.numbers, 0);
}

TEST(OutputNameTest, ATakenPathIsNumbered) {
  World world;
  world.taken = 1;
  EXPECT_EQ(unique(world, L"C:\\Out\\Report.pdf"), L"C:\\Out\\Report.1.pdf");
}

TEST(OutputNameTest, TheNumberedFormEndsInPdfWhateverTheExtension) {
  World world;
  world.taken = 1;
  EXPECT_EQ(unique(world, L"C:\\Out\\Report.prn"), L"C:\\Out\\Report.1.pdf");
}

TEST(OutputNameTest, EveryFurtherNumberReplacesTheLastEnding) {
  World world;
  world.taken = 3;
  EXPECT_EQ(unique(world, L"C:\\Out\\Report.pdf"), L"C:\\Out\\Report.1.2.3.pdf");
  EXPECT_EQ(world.asked.size(), 4U);
}

TEST(OutputNameTest, TheLastDotMayBelongToAFolder) {
  World world;
  world.taken = 1;
  EXPECT_EQ(unique(world, L"C:\\v1.0\\Report"), L"C:\\v1.1.pdf");
}

TEST(OutputNameTest, WithoutADotATakenPathHasNoNumber) {
  World world;
  world.taken = 1;
  EXPECT_EQ(unique(world, L"C:\\Out\\Report"), std::nullopt);
  EXPECT_EQ(world.numbers, 0);
}

TEST(OutputNameTest, NumberingStaysWithinTheBuffer) {
  World world;
  world.taken = 1;
  EXPECT_EQ(unique(world, std::wstring(773, L'n') + L".x"), std::wstring(773, L'n') + L".1.pdf");
  world = {};
  world.taken = 1;
  EXPECT_EQ(unique(world, std::wstring(774, L'n') + L".x"), std::wstring(774, L'n') + L".1.pd");
  world = {};
  world.taken = 1;
  EXPECT_EQ(unique(world, std::wstring(778, L'n') + L"."), std::wstring(778, L'n') + L".");
}

// Other jobs wait while this one looks for a name.
TEST(OutputNameTest, TheSearchForANumberEnds) {
  World world;
  world.taken = std::numeric_limits<std::size_t>::max();
  EXPECT_EQ(unique(world, L"C:\\Out\\Report.pdf"), std::nullopt);
  EXPECT_EQ(world.numbers, 1000);
  for (const std::wstring& path : world.asked) EXPECT_LT(path.size(), kSize);
}

TEST(OutputNameTest, TheThousandthNumberIsTried) {
  World world;
  world.taken = 1000;
  EXPECT_NE(unique(world, L"C:\\Out\\Report.pdf"), std::nullopt);
  EXPECT_EQ(world.numbers, 1000);
}

TEST(OutputNameTest, AFolderUnderTheNameIsInTheWay) {
  World world;
  world.taken = 1;
  world.areFolders = true;
  EXPECT_EQ(unique(world, L"C:\\Out\\Report.pdf"), L"C:\\Out\\Report.1.pdf");
}

TEST(OutputNameTest, AFolderThatWasChosenAsSuchIsLeftToTheCreation) {
  for (const wchar_t* const path : {L"C:\\Out.old\\", L"C:/Out.old/"}) {
    World world;
    world.taken = 1;
    world.areFolders = true;
    EXPECT_EQ(unique(world, path), path);
    EXPECT_EQ(world.numbers, 0);
  }
}

TEST(OutputNameTest, ActionsThatChooseNoNameLeaveFoldersToTheCreation) {
  for (const int action : {6, 99, -1}) {
    World world;
    world.taken = 1;
    world.areFolders = true;
    EXPECT_EQ(unique(world, L"C:\\Out.old", kSize, action), L"C:\\Out.old") << action;
    world.areFolders = false;
    world.asked.clear();
    EXPECT_EQ(unique(world, L"C:\\Out.old", kSize, action), L"C:\\Out.1.pdf") << action;
  }
}

}  // namespace
}  // namespace quillpress::driver
