#include "tests/unit/win32/support/ClassTest.h"
#include "umpd/win32/Diagnostics.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {

using Boxes = std::vector<std::wstring>;

constexpr DWORD kUnknownError = 0x2000ABCD;

class ErrorBoxTest : public classes::ClassTest {};

TEST_F(ErrorBoxTest, ThePlainOneIsFormatted) {
  showErrorBox("handle [%d](0x%x), [%s]", 300, 300, "Front desk");
  EXPECT_EQ(takeBoxes(), Boxes{L"[Error] handle [300](0x12c), [Front desk]"});
}

TEST_F(ErrorBoxTest, ALongTextIsCut) {
  showErrorBox("[%s]", std::string(100'000, 'n').c_str());
  const Boxes boxes = takeBoxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_TRUE(boxes[0].starts_with(L"[Error] [nnn"));
}

TEST_F(ErrorBoxTest, TheSystemExplainsTheLastErrorBelowTheCallersCaption) {
  SetLastError(ERROR_FILE_NOT_FOUND);
  showSystemErrorBox(L"C:\\Out\\100%s.pdf");
  const std::wstring explanation = systemMessage(ERROR_FILE_NOT_FOUND);
  EXPECT_GT(explanation.size(), 5U);
  EXPECT_EQ(takeBoxes(), Boxes{L"[C:\\Out\\100%s.pdf] " + explanation});
}

TEST_F(ErrorBoxTest, AnExtraTextFollowsAfterTwoLineBreaks) {
  SetLastError(ERROR_ACCESS_DENIED);
  showSystemErrorBox(L"It failed", L"Ask somebody.");
  EXPECT_EQ(takeBoxes(), Boxes{L"[It failed] " + systemMessage(ERROR_ACCESS_DENIED) + L"\n\nAsk somebody."});
}

TEST_F(ErrorBoxTest, AnUnknownErrorHasNoExplanation) {
  EXPECT_EQ(systemMessage(kUnknownError), L"Error string not found");
  SetLastError(kUnknownError);
  showSystemErrorBox(L"It failed");
  EXPECT_EQ(takeBoxes(), Boxes{L"[It failed] Error string not found"});
}

// Explanations may have places for arguments that nobody has.
TEST_F(ErrorBoxTest, PlacesOfAnExplanationAreLeftAsTheyAre) {
  EXPECT_NE(systemMessage(ERROR_BAD_EXE_FORMAT), L"Error string not found");
  EXPECT_NE(systemMessage(ERROR_BAD_EXE_FORMAT).find(L"%1"), std::wstring::npos);
}

}  // namespace
}  // namespace quillpress::driver
