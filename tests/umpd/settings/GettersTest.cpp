// What the driver reads of a running job.

#include <array>
#include <string>
#include <vector>

#include "tests/umpd/settings/SettingsTest.h"

namespace quillpress::harness {
namespace {

constexpr UINT kBoxStyle = MB_OK | MB_SERVICE_NOTIFICATION;
constexpr wchar_t kFiller = L'#';

// A buffer that shows what has been written into it.
std::wstring filled(size_t length) {
  return std::wstring(length, kFiller);
}

class GettersTest : public SettingsTest {
 protected:
  GettersTest() { usePrinter(); }

  // The buffer after getStringVal, which is told only `length` characters of it.
  std::wstring getInto(const Job& job, unsigned length, const wchar_t* name, const wchar_t* defaultValue) {
    std::wstring buffer = filled(length + 8);
    EXPECT_EQ(driver.getStringVal(job.handle(), name, buffer.data(), length, defaultValue), 1U);
    EXPECT_EQ(buffer.substr(length), filled(8)) << "written behind the buffer";
    return buffer.substr(0, length);
  }

  // What getStringVal has made of a buffer of ten characters.
  std::wstring get(const wchar_t* name, const wchar_t* defaultValue) {
    const Job job(library, printer);
    return getInto(job, 10, name, defaultValue);
  }

  void expectErrorBox(const wchar_t* text) {
    const Box box = boxes.takeOne();
    EXPECT_EQ(box.text, text);
    EXPECT_EQ(box.caption, L"Error");
    EXPECT_EQ(box.style, kBoxStyle);
    EXPECT_EQ(box.owner, nullptr);
    EXPECT_FALSE(box.wide);
  }
};

TEST_F(GettersTest, ANumberIsRead) {
  key.setNumber(L"imageDPI", 600);
  EXPECT_EQ(Job(library, printer).number(L"imageDPI", 1), 600);
}

TEST_F(GettersTest, AnAbsentNumberIsTheDefault) {
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"absent", 17), 17);
  EXPECT_EQ(job.number(L"absent", -17), -17);
}

TEST_F(GettersTest, ATextReadAsANumberIsItsLeadingDigits) {
  key.setText(L"digits", L"42");
  key.setText(L"digits and more", L"42a7");
  key.setText(L"negative", L"-42");
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"digits", 1), 42);
  EXPECT_EQ(job.number(L"digits and more", 1), 42);
  EXPECT_EQ(job.number(L"negative", 1), -42);
}

TEST_F(GettersTest, ATextWithoutDigitsReadAsANumberIsZeroAndNotTheDefault) {
  key.setText(L"word", L"yes");
  key.setText(L"empty", L"");
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"word", 1), 0);
  EXPECT_EQ(job.number(L"empty", 1), 0);
}

TEST_F(GettersTest, ANumberBeyond32BitsSaturates) {
  key.setText(L"great", L"99999999999");
  key.setText(L"small", L"-99999999999");
  key.setText(L"greatest", L"2147483647");
  key.setText(L"smallest", L"-2147483648");
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"great", 1), INT_MAX);
  EXPECT_EQ(job.number(L"small", 1), INT_MIN);
  EXPECT_EQ(job.number(L"greatest", 1), INT_MAX);
  EXPECT_EQ(job.number(L"smallest", 1), INT_MIN);
}

TEST_F(GettersTest, NamesAreFoundInAnyCase) {
  key.setNumber(L"passthru", 0);
  key.setText(L"PdfTemplate", L"letter");
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"PASSTHRU", 5), 0);
  EXPECT_EQ(job.text(L"pDFtEMPLATE"), L"letter");
}

TEST_F(GettersTest, OnlyTheLettersAToZAreFolded) {
  key.setText(L"\u00C4rger", L"upper");
  key.setText(L"\u0416", L"upper");
  // The neighbours of the letters differ by the same bit as the letters do.
  key.setText(L"before A @", L"sign");
  key.setText(L"after Z [", L"sign");
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"\u00C4RGER", L"none"), L"upper");
  EXPECT_EQ(job.text(L"\u00E4rger", L"none"), L"none");
  EXPECT_EQ(job.text(L"\u0436", L"none"), L"none");
  EXPECT_EQ(job.text(L"BEFORE a @", L"none"), L"sign");
  EXPECT_EQ(job.text(L"before a `", L"none"), L"none");
  EXPECT_EQ(job.text(L"AFTER z [", L"none"), L"sign");
  EXPECT_EQ(job.text(L"after z {", L"none"), L"none");
}

TEST_F(GettersTest, ATextShorterThanTheBufferIsCopied) {
  key.setText(L"t", L"123456789");
  EXPECT_EQ(get(L"t", L"default"), std::wstring(L"123456789\0", 10));
}

TEST_F(GettersTest, ATextAsLongAsTheBufferGivesTheDefault) {
  key.setText(L"t", L"1234567890");
  EXPECT_EQ(get(L"t", L"default").substr(0, 8), std::wstring(L"default\0", 8));
}

TEST_F(GettersTest, ATextLongerThanTheBufferGivesTheDefault) {
  key.setText(L"t", L"12345678901");
  EXPECT_EQ(get(L"t", L"default").substr(0, 8), std::wstring(L"default\0", 8));
}

TEST_F(GettersTest, ATextThatDoesNotFitLeavesTheBufferAloneWithoutADefault) {
  key.setText(L"t", L"1234567890");
  EXPECT_EQ(get(L"t", nullptr), filled(10));
}

TEST_F(GettersTest, AnAbsentTextGivesTheDefault) {
  EXPECT_EQ(get(L"absent", L"default").substr(0, 8), std::wstring(L"default\0", 8));
}

TEST_F(GettersTest, AnAbsentTextLeavesTheBufferAloneWithoutADefault) {
  EXPECT_EQ(get(L"absent", nullptr), filled(10));
}

TEST_F(GettersTest, AnEmptyTextGivesTheDefault) {
  key.setText(L"empty", L"");
  EXPECT_EQ(get(L"empty", L"default").substr(0, 8), std::wstring(L"default\0", 8));
  EXPECT_EQ(get(L"empty", nullptr), filled(10));
}

TEST_F(GettersTest, AnEmptyDefaultEmptiesTheBuffer) {
  EXPECT_EQ(get(L"absent", L""), L'\0' + filled(9));
}

TEST_F(GettersTest, ADefaultLongerThanTheBufferIsCutAndTerminated) {
  EXPECT_EQ(get(L"absent", L"0123456789ABCDEF"), std::wstring(L"012345678\0", 10));
  EXPECT_EQ(get(L"absent", L"0123456789"), std::wstring(L"012345678\0", 10));
}

TEST_F(GettersTest, ABufferOfOneCharacterTakesNoText) {
  key.setText(L"t", L"1");
  const Job job(library, printer);
  EXPECT_EQ(getInto(job, 1, L"t", nullptr), filled(1));
  EXPECT_EQ(getInto(job, 1, L"t", L"default"), std::wstring(1, L'\0'));
}

TEST_F(GettersTest, ABufferOfNoLengthIsLeftAlone) {
  key.setText(L"t", L"1");
  const Job job(library, printer);
  EXPECT_EQ(getInto(job, 0, L"t", L"default"), L"");
}

TEST_F(GettersTest, ANumberReadAsATextIsDecimal) {
  key.setNumber(L"n", 300);
  key.setNumber(L"negative", static_cast<DWORD>(-7));
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"n"), L"300");
  EXPECT_EQ(job.text(L"negative"), L"-7");
}

TEST_F(GettersTest, ALongTextIsCopiedWhole) {
  const std::wstring value(10000, L'x');
  key.setText(L"t", value);
  EXPECT_EQ(Job(library, printer).text(L"t"), value);
}

class MetadataPacketTest : public GettersTest {
 protected:
  // The packet tells the time of the call, which may be another one in the next call, of the same length.
  static size_t lengthOfPacket(const Job& job) { return job.text(L"pdfaXML").size(); }
};

TEST_F(MetadataPacketTest, IsWhatTheNamePdfaXmlGives) {
  key.setText(L"pdfaXML", L"a value of this name");
  const std::wstring packet = Job(library, printer).text(L"pdfaXML", L"default");
  EXPECT_NE(packet.find(L"xpacket"), std::wstring::npos) << narrow(packet);
  EXPECT_EQ(packet.find(L"a value of this name"), std::wstring::npos);
}

TEST_F(MetadataPacketTest, IsGivenForTheExactNameAlone) {
  EXPECT_EQ(Job(library, printer).text(L"PDFAXML", L"default"), L"default");
  key.setText(L"pdfaxml", L"a value");
  EXPECT_EQ(Job(library, printer).text(L"PDFAXML", L"default"), L"a value");
}

TEST_F(MetadataPacketTest, FitsABufferThatIsLongerByOne) {
  const Job job(library, printer);
  const size_t length = lengthOfPacket(job);
  const std::wstring buffer = getInto(job, static_cast<unsigned>(length) + 1, L"pdfaXML", L"default");
  EXPECT_EQ(buffer.find(L'\0'), length);
  EXPECT_NE(buffer.find(L"xpacket"), std::wstring::npos);
}

TEST_F(MetadataPacketTest, AsLongAsTheBufferGivesTheEmptyTextAndNotTheDefault) {
  const Job job(library, printer);
  const auto length = static_cast<unsigned>(lengthOfPacket(job));
  EXPECT_EQ(getInto(job, length, L"pdfaXML", L"default").front(), L'\0');
  EXPECT_EQ(getInto(job, 1, L"pdfaXML", nullptr).front(), L'\0');
}

TEST_F(MetadataPacketTest, IsANumberOfThisNameForTheNumberGetter) {
  key.setNumber(L"pdfaXML", 9);
  EXPECT_EQ(Job(library, printer).number(L"pdfaXML", 1), 9);
}

class MultibyteGetterTest : public GettersTest {
 protected:
  // The buffer after getStringMultibyte, which is told only `length` bytes of it.
  std::string getInto(const Job& job, size_t length, const char* name, unsigned expectedResult) {
    std::string buffer(length + 8, '#');
    EXPECT_EQ(driver.getStringMultibyte(job.handle(), name, buffer.data(), static_cast<unsigned>(length)),
              expectedResult);
    EXPECT_EQ(buffer.substr(length), std::string(8, '#')) << "written behind the buffer";
    return buffer.substr(0, length);
  }

  static constexpr size_t kAmple = 65536;
};

TEST_F(MultibyteGetterTest, GivesThePacketAsUtf8) {
  key.setNumber(L"DocInfoEnable", 1);
  key.setText(L"DocInfoTitle", L"Gr\u00FC\u00DFe \u20AC");
  const Job job(library, printer);
  const std::string packet = getInto(job, kAmple, "pdfaXML", 1).c_str();
  EXPECT_NE(packet.find("xpacket"), std::string::npos);
  EXPECT_NE(packet.find("Gr\xC3\xBC\xC3\x9F"
                        "e \xE2\x82\xAC"),
            std::string::npos)
      << packet;
}

TEST_F(MultibyteGetterTest, GivesAPacketThatJustFits) {
  const Job job(library, printer);
  const size_t length = std::string(getInto(job, kAmple, "pdfaXML", 1).c_str()).size();
  const std::string buffer = getInto(job, length + 1, "pdfaXML", 1);
  EXPECT_EQ(buffer.find('\0'), length);
}

TEST_F(MultibyteGetterTest, FailsWithAnEmptyTextWhenThePacketWouldBeCut) {
  const Job job(library, printer);
  const size_t length = std::string(getInto(job, kAmple, "pdfaXML", 1).c_str()).size();
  EXPECT_EQ(getInto(job, length, "pdfaXML", 0).front(), '\0');
  EXPECT_EQ(getInto(job, 1, "pdfaXML", 0).front(), '\0');
}

TEST_F(MultibyteGetterTest, SucceedsForOtherNamesAndLeavesTheBufferAlone) {
  key.setText(L"t", L"text");
  const Job job(library, printer);
  EXPECT_EQ(getInto(job, 20, "t", 1), std::string(20, '#'));
  EXPECT_EQ(getInto(job, 20, "absent", 1), std::string(20, '#'));
  EXPECT_EQ(getInto(job, 20, "PDFAXML", 1), std::string(20, '#'));
  EXPECT_EQ(getInto(job, 20, "", 1), std::string(20, '#'));
}

// Handles that are those of no running job.
class InvalidJobTest : public GettersTest, public ::testing::WithParamInterface<const char*> {
 protected:
  JobHandle invalidJob() {
    const std::string kind = GetParam();
    if (kind == "Null") return 0;
    if (kind == "MemoryOfAnotherKind") return reinterpret_cast<JobHandle>(noJob_.data());
    Job job(library, printer);
    const JobHandle ended = job.handle();
    job.end();
    return ended;
  }

 private:
  std::array<BYTE, 8192> noJob_{};
};

TEST_P(InvalidJobTest, ANumberIsTheDefaultAfterABox) {
  EXPECT_EQ(driver.getIntVal(invalidJob(), L"imageDPI", 17), 17);
  // The text names another function than the one that was called.
  expectErrorBox(L"getPrinterName invalid parms");
}

TEST_P(InvalidJobTest, ATextFailsAfterABox) {
  std::wstring buffer = filled(10);
  EXPECT_EQ(driver.getStringVal(invalidJob(), L"t", buffer.data(), 10, L"default"), 0U);
  EXPECT_EQ(buffer, filled(10));
  expectErrorBox(L"getStringVal invalid parms");
}

TEST_P(InvalidJobTest, AMultibyteTextFailsAfterABox) {
  std::string buffer(10, '#');
  EXPECT_EQ(driver.getStringMultibyte(invalidJob(), "pdfaXML", buffer.data(), 10), 0U);
  EXPECT_EQ(buffer, std::string(10, '#'));
  expectErrorBox(L"getStringMultibyte invalid parms");
}

INSTANTIATE_TEST_SUITE_P(Handles, InvalidJobTest, ::testing::Values("Null", "MemoryOfAnotherKind", "Ended"),
                         [](const auto& each) { return std::string(each.param); });

}  // namespace
}  // namespace quillpress::harness
