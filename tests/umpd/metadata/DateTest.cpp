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

class DateTest : public MetadataTest {
 protected:
  [[nodiscard]] std::wstring date() const {
    const Job job(library, printer);
    return dateOf(job.text(L"pdfaXML"));
  }

  void setZone(LONG bias, LONG daylightBias, DWORD result) {
    library.replace("GetTimeZoneInformation", [=](LPTIME_ZONE_INFORMATION zone) -> DWORD {
      *zone = {};
      zone->Bias = bias;
      zone->DaylightBias = daylightBias;
      return result;
    });
  }
};

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

struct Zone {
  LONG bias;
  const wchar_t* offset;
};

class ZoneTest : public DateTest, public ::testing::WithParamInterface<Zone> {};

TEST_P(ZoneTest, HasItsOffsetBehindTheTime) {
  setZone(GetParam().bias, 0, TIME_ZONE_ID_UNKNOWN);
  EXPECT_EQ(date().substr(19), GetParam().offset);
}

TEST_P(ZoneTest, HasTheSameOffsetInSummer) {
  setZone(GetParam().bias, -60, TIME_ZONE_ID_DAYLIGHT);
  EXPECT_EQ(date().substr(19), GetParam().offset);
}

INSTANTIATE_TEST_SUITE_P(Zones, ZoneTest,
                         ::testing::Values(Zone{0, L"Z"}, Zone{300, L"-05:00"}, Zone{-330, L"+05:30"},
                                           Zone{-345, L"+05:45"}, Zone{210, L"-03:30"}, Zone{60, L"-01:00"},
                                           Zone{-60, L"+01:00"}, Zone{59, L"-00:59"}, Zone{-59, L"+00:59"},
                                           Zone{5, L"-00:05"}, Zone{-5, L"+00:05"}, Zone{61, L"-01:01"},
                                           Zone{-599, L"+09:59"}, Zone{600, L"-10:00"}, Zone{720, L"-12:00"},
                                           Zone{-840, L"+14:00"}),
                         [](const auto& each) {
                           return (each.param.bias < 0 ? "East" : "West") +
                                  std::to_string(each.param.bias < 0 ? -each.param.bias : each.param.bias);
                         });

}  // namespace
}  // namespace quillpress::harness
