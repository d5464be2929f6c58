// How the packet gets into a caller's buffer.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "tests/umpd/metadata/MetadataTest.h"

namespace quillpress::harness {
namespace {

constexpr wchar_t kWideMark = L'\x2592';
constexpr char kMark = '\x7E';

class PacketGettersTest : public MetadataTest {
 protected:
  // Time stands still, so that the packet keeps its length and its text.
  PacketGettersTest() {
    library.replace("GetLocalTime", [](LPSYSTEMTIME time) { *time = {2024, 2, 4, 29, 12, 34, 56, 789}; });
    library.replace("GetTimeZoneInformation", [](LPTIME_ZONE_INFORMATION zone) -> DWORD {
      *zone = {};
      zone->Bias = -60;
      return TIME_ZONE_ID_UNKNOWN;
    });
  }

  // What a wide buffer of this room holds after asking, everything behind its room included.
  struct Wide {
    unsigned result;
    std::wstring buffer;
    [[nodiscard]] std::wstring text() const { return buffer.c_str(); }
  };
  [[nodiscard]] Wide askWide(JobHandle handle, const wchar_t* name, unsigned room,
                             const wchar_t* defaultValue = nullptr) const {
    Wide answer{0, std::wstring(room + 100, kWideMark)};
    answer.result = driver.getStringVal(handle, name, answer.buffer.data(), room, defaultValue);
    EXPECT_EQ(answer.buffer.substr(room), std::wstring(100, kWideMark)) << "behind the buffer";
    return answer;
  }

  struct Narrow {
    unsigned result;
    std::string buffer;
    [[nodiscard]] std::string text() const { return buffer.c_str(); }
  };
  [[nodiscard]] Narrow askNarrow(JobHandle handle, const char* name, unsigned room) const {
    Narrow answer{0, std::string(room + 100, kMark)};
    answer.result = driver.getStringMultibyte(handle, name, answer.buffer.data(), room);
    EXPECT_EQ(answer.buffer.substr(room), std::string(100, kMark)) << "behind the buffer";
    return answer;
  }

  // Handles that are no running job.
  [[nodiscard]] std::vector<JobHandle> invalidHandles() {
    Job ended(library, printer);
    const JobHandle endedHandle = ended.handle();
    ended.end();
    return {0, 1, 0xFFFFFFFF, endedHandle,
            static_cast<JobHandle>(reinterpret_cast<ULONG_PTR>(zeros_.data()))};
  }

  void expectBox(const wchar_t* text) {
    const Box box = boxes.takeOne();
    EXPECT_EQ(box.text, text);
    EXPECT_EQ(box.caption, L"Error");
    EXPECT_EQ(box.owner, nullptr);
    EXPECT_NE(box.style & MB_SERVICE_NOTIFICATION, 0U);
  }

  const Driver driver{library};

 private:
  const std::array<char, 4096> zeros_{};
};

TEST_F(PacketGettersTest, ARoomyBufferGetsThePacket) {
  const Job job(library, printer, L"Document");
  const Wide answer = askWide(job.handle(), L"pdfaXML", 4096);
  EXPECT_EQ(answer.result, 1U);
  EXPECT_EQ(dateOf(answer.text()), L"2024-02-29T12:34:56+01:00");
  EXPECT_EQ(withoutDates(answer.text()),
            packetWith(L"pdf:Producer='Quillpress'\n", dublinCore(titleElement(L"Document"))));
}

TEST_F(PacketGettersTest, OneCharacterMoreThanThePacketIsEnough) {
  const Job job(library, printer);
  const std::wstring packet = job.text(L"pdfaXML");
  const Wide answer = askWide(job.handle(), L"pdfaXML", static_cast<unsigned>(packet.size()) + 1);
  EXPECT_EQ(answer.result, 1U);
  EXPECT_EQ(answer.text(), packet);
}

TEST_F(PacketGettersTest, ABufferAsLongAsThePacketGetsTheEmptyText) {
  const Job job(library, printer);
  const auto length = static_cast<unsigned>(job.text(L"pdfaXML").size());
  for (const unsigned room : {length, length - 1, 260U, 1U}) {
    const Wide answer = askWide(job.handle(), L"pdfaXML", room);
    EXPECT_EQ(answer.result, 1U) << room;
    EXPECT_EQ(answer.text(), L"") << room;
  }
}

TEST_F(PacketGettersTest, ABufferWithoutRoomStaysUntouched) {
  const Job job(library, printer);
  EXPECT_EQ(askWide(job.handle(), L"pdfaXML", 0).result, 1U);
}

TEST_F(PacketGettersTest, TheDefaultIsNotUsedForAPacketThatDoesNotFit) {
  const Job job(library, printer);
  EXPECT_EQ(askWide(job.handle(), L"pdfaXML", 100, L"default").text(), L"");
}

TEST_F(PacketGettersTest, TheCaseOfItsNameCounts) {
  settings.setText(L"other", L"value");
  const Job job(library, printer);
  for (const wchar_t* name : {L"PDFAXML", L"pdfaxml", L"PdfaXML", L"pdfaXML ", L"pdfaXM"}) {
    EXPECT_EQ(askWide(job.handle(), name, 4096, L"default").text(), L"default");
  }
  EXPECT_EQ(askWide(job.handle(), L"OTHER", 4096, L"default").text(), L"value");
}

TEST_F(PacketGettersTest, TheNarrowFormIsUtf8) {
  settings.setNumber(L"DocInfoEnable", 1);
  settings.setText(L"DocInfoTitle", L"a\u00E9\u20AC\xD83D\xDE00");
  const Job job(library, printer);
  const Narrow answer = askNarrow(job.handle(), "pdfaXML", 4096);
  EXPECT_EQ(answer.result, 1U);
  EXPECT_NE(answer.text().find("x-default'>a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80</rdf:li>"),
            std::string::npos)
      << answer.text();
}

TEST_F(PacketGettersTest, TheNarrowFormOfAsciiIsTheSameText) {
  const Job job(library, printer);
  const std::wstring wide = job.text(L"pdfaXML");
  EXPECT_EQ(askNarrow(job.handle(), "pdfaXML", 4096).text(), std::string(wide.begin(), wide.end()));
}

TEST_F(PacketGettersTest, TheNarrowBufferNeedsEveryByteAndTheFinalZero) {
  settings.setNumber(L"DocInfoEnable", 1);
  settings.setText(L"DocInfoTitle", L"\u00E9\u20AC");
  const Job job(library, printer);
  const std::string packet = askNarrow(job.handle(), "pdfaXML", 4096).text();
  const auto bytes = static_cast<unsigned>(packet.size());
  ASSERT_EQ(bytes, job.text(L"pdfaXML").size() + 3);
  const Narrow fitting = askNarrow(job.handle(), "pdfaXML", bytes + 1);
  EXPECT_EQ(fitting.result, 1U);
  EXPECT_EQ(fitting.text(), packet);
}

TEST_F(PacketGettersTest, ANarrowBufferThatIsTooShortGetsTheEmptyText) {
  const Job job(library, printer);
  const auto bytes = static_cast<unsigned>(job.text(L"pdfaXML").size());
  for (const unsigned room : {bytes, bytes - 1, 100U, 1U}) {
    const Narrow answer = askNarrow(job.handle(), "pdfaXML", room);
    EXPECT_EQ(answer.result, 0U) << room;
    EXPECT_EQ(answer.text(), "") << room;
  }
}

TEST_F(PacketGettersTest, ANarrowBufferWithoutRoomStaysUntouched) {
  const Job job(library, printer);
  EXPECT_EQ(askNarrow(job.handle(), "pdfaXML", 0).result, 0U);
}

TEST_F(PacketGettersTest, TheNarrowFormServesNoOtherName) {
  settings.setText(L"other", L"value");
  const Job job(library, printer);
  for (const char* name : {"PDFAXML", "pdfaxml", "other", "printerName", "", "pdfaXML2"}) {
    const Narrow answer = askNarrow(job.handle(), name, 4096);
    EXPECT_EQ(answer.result, 1U) << name;
    EXPECT_EQ(answer.buffer, std::string(4096 + 100, kMark)) << name;
  }
}

TEST_F(PacketGettersTest, AnInvalidHandleShowsABoxAndLeavesTheWideBuffer) {
  for (const JobHandle handle : invalidHandles()) {
    const Wide answer = askWide(handle, L"pdfaXML", 4096, L"default");
    EXPECT_EQ(answer.result, 0U) << handle;
    EXPECT_EQ(answer.buffer, std::wstring(4096 + 100, kWideMark)) << handle;
    expectBox(L"getStringVal invalid parms");
  }
}

TEST_F(PacketGettersTest, AnInvalidHandleShowsABoxAndLeavesTheNarrowBuffer) {
  for (const JobHandle handle : invalidHandles()) {
    for (const char* name : {"pdfaXML", "other"}) {
      const Narrow answer = askNarrow(handle, name, 4096);
      EXPECT_EQ(answer.result, 0U) << handle;
      EXPECT_EQ(answer.buffer, std::string(4096 + 100, kMark)) << handle;
      expectBox(L"getStringMultibyte invalid parms");
    }
  }
}

TEST_F(PacketGettersTest, AJobMayBeAskedBetweenItsBlocks) {
  settings.setNumber(L"passthru", 1);
  const Job job(library, printer);
  const std::wstring before = job.text(L"pdfaXML");
  library.replace("WritePrinter", [](HANDLE, LPVOID, DWORD size, LPDWORD written) -> BOOL {
    *written = size;
    return TRUE;
  });
  EXPECT_EQ(job.write("%!PS"), 1);
  EXPECT_EQ(job.text(L"pdfaXML"), before);
}

}  // namespace
}  // namespace quillpress::harness
