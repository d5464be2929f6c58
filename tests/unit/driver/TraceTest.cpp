#include <gtest/gtest.h>

#include "umpd/rules/Trace.h"

namespace quillpress::driver {
namespace {

std::wstring traced(std::wstring_view format, std::initializer_list<TraceArgument> arguments) {
  return traceText(format, arguments);
}

TEST(TraceTest, WideTextsStandForTheirConversions) {
  const std::wstring name = L"\u4E2D";
  EXPECT_EQ(traced(L"[%s], [%s]\n", {TraceArgument(name), TraceArgument(L"b")}), L"[\u4E2D], [b]\n");
}

TEST(TraceTest, NumbersAreDecimalOrHexadecimal) {
  EXPECT_EQ(traced(L"%d %d %x", {TraceArgument(-7), TraceArgument(true), TraceArgument(255)}), L"-7 1 ff");
}

TEST(TraceTest, ANullTextIsToldAsSuch) {
  const wchar_t* const none = nullptr;
  EXPECT_EQ(traced(L"%s", {TraceArgument(none)}), L"(null)");
}

TEST(TraceTest, ConversionsInATextAreLeftAlone) {
  EXPECT_EQ(traced(L"%s|%d", {TraceArgument(L"%d"), TraceArgument(1)}), L"%d|1");
}

TEST(TraceTest, WithoutTheBuildOptionNothingIsEvaluated) {
  static_assert(!kIsTraceOn);
  int evaluations = 0;
  QUILLPRESS_TRACE(L"%d\n", ++evaluations);
  EXPECT_EQ(evaluations, 0);
}

static_assert(TraceArgument::kIsText<std::wstring> && TraceArgument::kIsText<const wchar_t*>);
static_assert(!TraceArgument::kIsText<const char*> && !TraceArgument::kIsText<int>);
static_assert(TraceArgument::kIsNumber<bool> && TraceArgument::kIsNumber<void*>);
static_assert(!TraceArgument::kIsNumber<std::wstring>);

}  // namespace
}  // namespace quillpress::driver
