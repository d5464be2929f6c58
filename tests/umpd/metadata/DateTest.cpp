// The dates of the packet: now, with the offset of the local time zone.

#include <array>
#include <cwchar>

#include "tests/umpd/metadata/MetadataTest.h"

namespace quillpress::harness {
namespace {

std::wstring localTime() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  std::array<wchar_t, 32> text{};
  std::swprintf(text.data(), text.size(), L"%04u-%02u-%02uT%02u:%02u:%02u", unsigned{now.wYear},
                unsigned{now.wMonth}, unsigned{now.wDay}, unsigned{now.wHour}, unsigned{now.wMinute},
                unsigned{now.wSecond});
  return text.data();
}

using DateTest = MetadataTest;

TEST_F(DateTest, BothAreTheLocalTimeOfTheQuestion) {
  const Job job(library, printer);
  Sleep(1100);
  const std::wstring before = localTime();
  const std::wstring date = dateOf(job.text(L"pdfaXML"));
  const std::wstring after = localTime();
  EXPECT_LE(before, date.substr(0, 19));
  EXPECT_GE(after, date.substr(0, 19));
}

TEST_F(DateTest, AreTakenAnewForEachQuestion) {
  const Job job(library, printer);
  const std::wstring first = dateOf(job.text(L"pdfaXML"));
  Sleep(1100);
  EXPECT_LT(first, dateOf(job.text(L"pdfaXML")));
}

}  // namespace
}  // namespace quillpress::harness
