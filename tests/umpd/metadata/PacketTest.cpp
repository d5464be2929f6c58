// The packet as a whole, for what a user may have set.

#include "tests/umpd/metadata/MetadataTest.h"

namespace quillpress::harness {
namespace {

class PacketTest : public MetadataTest {
 protected:
  void setAll(DWORD enable) {
    settings.setNumber(L"DocInfoEnable", enable);
    settings.setText(L"DocInfoTitle", L"A Title");
    settings.setText(L"DocInfoAuthor", L"An Author");
    settings.setText(L"DocInfoSubject", L"A Subject");
    settings.setText(L"DocInfoKeywords", L"some, keywords");
  }

  static constexpr wchar_t kProducer[] = L"pdf:Producer='Quillpress'\n";
  static constexpr wchar_t kProducerAndKeywords[] =
      L"pdf:Producer='Quillpress'\n"
      L"pdf:Keywords='some, keywords'\n";
};

TEST_F(PacketTest, WithNothingConfiguredTellsTheDocumentName) {
  EXPECT_EQ(packet(L"Document"), packetWith(kProducer, dublinCore(titleElement(L"Document"))));
}

TEST_F(PacketTest, OfAPrinterNeverUsedBeforeTellsTheDocumentName) {
  settings.removeTree();
  EXPECT_EQ(packet(L"Document"), packetWith(kProducer, dublinCore(titleElement(L"Document"))));
}

TEST_F(PacketTest, TellsAllThatIsSetWhenEnabled) {
  setAll(1);
  EXPECT_EQ(packet(), packetWith(kProducerAndKeywords,
                                 dublinCore(titleElement(L"A Title") + creatorElement(L"An Author") +
                                            descriptionElement(L"A Subject"))));
}

TEST_F(PacketTest, IsEnabledByEveryNumberButZero) {
  for (const DWORD enable : {2U, 0x80000000U, 0xFFFFFFFFU}) {
    setAll(enable);
    EXPECT_EQ(title(), L"A Title") << enable;
  }
}

TEST_F(PacketTest, DisabledHidesTitleAndAuthorButNotSubjectAndKeywords) {
  setAll(0);
  EXPECT_EQ(packet(L"Document"),
            packetWith(kProducerAndKeywords,
                       dublinCore(titleElement(L"Document") + descriptionElement(L"A Subject"))));
}

TEST_F(PacketTest, IsDisabledWhenTheSwitchIsAbsent) {
  setAll(1);
  settings.remove(L"DocInfoEnable");
  EXPECT_EQ(packet(L"Document"),
            packetWith(kProducerAndKeywords,
                       dublinCore(titleElement(L"Document") + descriptionElement(L"A Subject"))));
}

TEST_F(PacketTest, DisabledWithoutATitleTakesTheDocumentName) {
  settings.setNumber(L"DocInfoEnable", 0);
  EXPECT_EQ(packet(L"Document"), packetWith(kProducer, dublinCore(titleElement(L"Document"))));
}

TEST_F(PacketTest, ASwitchThatIsATextStopsTheReading) {
  setAll(1);
  settings.setText(L"DocInfoEnable", L"1");
  EXPECT_EQ(packet(L"Document"), packetWith(kProducer, dublinCore(titleElement(L"Document"))));
}

TEST_F(PacketTest, ASwitchWiderThan32BitsStopsTheReading) {
  setAll(1);
  settings.setBytes(L"DocInfoEnable", REG_BINARY, {1, 0, 0, 0, 0, 0, 0, 0});
  EXPECT_EQ(packet(L"Document"), packetWith(kProducer, dublinCore(titleElement(L"Document"))));
}

TEST_F(PacketTest, ATextThatIsANumberIsEmpty) {
  setAll(1);
  settings.setNumber(L"DocInfoAuthor", 7);
  settings.setNumber(L"DocInfoKeywords", 7);
  EXPECT_EQ(packet(),
            packetWith(kProducer, dublinCore(titleElement(L"A Title") + descriptionElement(L"A Subject"))));
}

TEST_F(PacketTest, ATextWithoutAFinalZeroIsReadWhole) {
  settings.setNumber(L"DocInfoEnable", 1);
  settings.setBytes(L"DocInfoTitle", REG_SZ, {'N', 0, 'o', 0, ' ', 0, 'e', 0, 'n', 0, 'd', 0});
  EXPECT_EQ(title(), L"No end");
}

TEST_F(PacketTest, CreatorProducerAndDatesOfTheSettingsAreNotUsed) {
  setAll(1);
  settings.setText(L"DocInfoCreator", L"Another Program");
  settings.setText(L"DocInfoProducer", L"Another Producer");
  settings.setText(L"DocInfoCreationDate", L"1999-01-01T00:00:00Z");
  settings.setText(L"DocInfoModDate", L"1999-01-02T00:00:00Z");
  EXPECT_EQ(packet(), packetWith(kProducerAndKeywords,
                                 dublinCore(titleElement(L"A Title") + creatorElement(L"An Author") +
                                            descriptionElement(L"A Subject"))));
}

TEST_F(PacketTest, KeywordsAloneMakeNoDublinCoreBlock) {
  settings.setText(L"DocInfoKeywords", L"some, keywords");
  EXPECT_EQ(packet(L""), packetWith(kProducerAndKeywords, L""));
}

TEST_F(PacketTest, WithNeitherTitleNorAuthorNorSubjectHasNoDublinCoreBlock) {
  EXPECT_EQ(packet(L""), packetWith(kProducer, L""));
}

TEST_F(PacketTest, AnAuthorAloneMakesADublinCoreBlock) {
  settings.setNumber(L"DocInfoEnable", 1);
  settings.setText(L"DocInfoAuthor", L"An Author");
  EXPECT_EQ(packet(L""), packetWith(kProducer, dublinCore(creatorElement(L"An Author"))));
}

TEST_F(PacketTest, ASubjectAloneMakesADublinCoreBlock) {
  settings.setText(L"DocInfoSubject", L"A Subject");
  EXPECT_EQ(packet(L""), packetWith(kProducer, dublinCore(descriptionElement(L"A Subject"))));
}

TEST_F(PacketTest, ReadsTheSettingsWhenItIsAskedFor) {
  setAll(1);
  const Job job(library, printer);
  settings.setText(L"DocInfoTitle", L"A Later Title");
  settings.setText(L"DocInfoAuthor", L"");
  settings.remove(L"DocInfoKeywords");
  EXPECT_EQ(
      withoutDates(job.text(L"pdfaXML")),
      packetWith(kProducer, dublinCore(titleElement(L"A Later Title") + descriptionElement(L"A Subject"))));
  EXPECT_EQ(job.text(L"DocInfoTitle"), L"A Title");
}

TEST_F(PacketTest, ASwitchTurnedOffWhileTheJobRunsCounts) {
  setAll(1);
  const Job job(library, printer, L"Document");
  settings.setNumber(L"DocInfoEnable", 0);
  EXPECT_EQ(withoutDates(job.text(L"pdfaXML")),
            packetWith(kProducerAndKeywords,
                       dublinCore(titleElement(L"Document") + descriptionElement(L"A Subject"))));
}

TEST_F(PacketTest, WithoutARegistryOfTheUserTellsTheDocumentName) {
  setAll(1);
  const Job job(library, printer, L"Document");
  byName.replace("RegOpenCurrentUser", [](REGSAM, PHKEY) -> LONG { return ERROR_ACCESS_DENIED; });
  EXPECT_EQ(withoutDates(job.text(L"pdfaXML")), packetWith(kProducer, dublinCore(titleElement(L"Document"))));
}

TEST_F(PacketTest, ASettingOfItsNameIsNotIt) {
  settings.setText(L"pdfaXML", L"<x/>");
  EXPECT_EQ(packet(L"Document"), packetWith(kProducer, dublinCore(titleElement(L"Document"))));
}

TEST_F(PacketTest, AJobBegunByPrinterNameHasOneToo) {
  setAll(1);
  const Job job(library, printer.name());
  EXPECT_EQ(
      withoutDates(job.text(L"pdfaXML")),
      packetWith(kProducerAndKeywords, dublinCore(titleElement(L"A Title") + creatorElement(L"An Author") +
                                                  descriptionElement(L"A Subject"))));
}

TEST_F(PacketTest, AskingTwiceGivesTheSame) {
  setAll(1);
  const Job job(library, printer);
  EXPECT_EQ(withoutDates(job.text(L"pdfaXML")), withoutDates(job.text(L"pdfaXML")));
}

class LongTextTest : public PacketTest, public ::testing::WithParamInterface<const wchar_t*> {
 protected:
  // The text in the packet that a setting of so many characters becomes.
  std::wstring shown(std::size_t length) {
    std::wstring text(length, L'x');
    text.back() = L'!';
    settings.setNumber(L"DocInfoEnable", 1);
    settings.setText(GetParam(), text);
    const std::wstring all = packet(L"");
    const std::size_t begin = all.find(L"xx");
    const std::size_t end = all.find_first_not_of(L"x!", begin);
    return begin == std::wstring::npos ? L"" : all.substr(begin, end - begin);
  }
};

TEST_P(LongTextTest, OfUpTo2000CharactersIsReadWhole) {
  for (const std::size_t length : {255U, 1998U, 1999U, 2000U}) {
    EXPECT_EQ(shown(length), std::wstring(length - 1, L'x') + L'!') << length;
  }
}

TEST_P(LongTextTest, IsCutAfter2000Characters) {
  for (const std::size_t length : {2001U, 2002U, 5000U}) {
    EXPECT_EQ(shown(length), std::wstring(2000, L'x')) << length;
  }
}

INSTANTIATE_TEST_SUITE_P(Texts, LongTextTest,
                         ::testing::Values(L"DocInfoTitle", L"DocInfoAuthor", L"DocInfoSubject",
                                           L"DocInfoKeywords"));

}  // namespace
}  // namespace quillpress::harness
