#include <gtest/gtest.h>

#include "cli/archive/XmpPacket.h"

namespace quillpress::cli {

namespace {

std::string pdfOf(std::string_view text) {
  const std::optional<DocumentDate> date = documentDateOf(text);
  return date ? date->pdf : "none";
}

std::string xmpOf(std::string_view text) {
  const std::optional<DocumentDate> date = documentDateOf(text);
  return date ? date->xmp : "none";
}

TEST(XmpPacketTest, PartAndLevelAreThere) {
  const std::string packet = xmpPacket({}, ArchivePart::k3b);
  EXPECT_NE(packet.find("<pdfaid:part>3</pdfaid:part>\n<pdfaid:conformance>B</pdfaid:conformance>"),
            std::string::npos);
}

TEST(XmpPacketTest, PacketsBeginAndEndAsProgramsThatSearchForThemExpect) {
  const std::string packet = xmpPacket({}, ArchivePart::k1b);
  EXPECT_TRUE(packet.starts_with("<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"));
  EXPECT_TRUE(packet.ends_with("<?xpacket end=\"w\"?>"));
}

TEST(XmpPacketTest, ThereIsRoomForChangesInPlace) {
  const std::string packet = xmpPacket({}, ArchivePart::k1b);
  const std::size_t end = packet.find("<?xpacket end");
  EXPECT_GE(end - packet.find_last_not_of(" \n", end - 1), 2000U);
}

TEST(XmpPacketTest, WhatIsNotKnownIsNotThere) {
  const std::string packet = xmpPacket({}, ArchivePart::k1b);
  for (const char* const name :
       {"dc:title", "dc:creator", "dc:description", "pdf:Keywords", "xmp:CreateDate"})
    EXPECT_EQ(packet.find("<" + std::string(name)), std::string::npos) << name;
}

TEST(XmpPacketTest, TextsAreEscaped) {
  XmpFacts facts;
  facts.title = "a < b && c > d\re";
  EXPECT_NE(xmpPacket(facts, ArchivePart::k1b)
                .find("<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">a &lt; b &amp;&amp; c &gt; "
                      "d&#13;e</rdf:li></rdf:Alt></dc:title>"),
            std::string::npos);
}

TEST(XmpPacketTest, TheAuthorIsTheOnlyOneInAnOrder) {
  XmpFacts facts;
  facts.author = "A, B";
  EXPECT_NE(xmpPacket(facts, ArchivePart::k1b)
                .find("<dc:creator><rdf:Seq><rdf:li>A, B</rdf:li></rdf:Seq></dc:creator>"),
            std::string::npos);
}

TEST(XmlSayableTest, TextStays) {
  EXPECT_EQ(xmlSayable("plain \t\r\n \xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80"),
            "plain \t\r\n \xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80");
}

TEST(XmlSayableTest, ControlCharactersGo) {
  EXPECT_EQ(xmlSayable(std::string_view("a\0b\x1F"
                                        "c",
                                        5)),
            "abc");
}

TEST(XmlSayableTest, WhatIsNoUtf8Goes) {
  EXPECT_EQ(xmlSayable("a\x80"
                       "b\xC3"),
            "ab");
  EXPECT_EQ(xmlSayable("\xC0\x80"), "");
  EXPECT_EQ(xmlSayable("\xE0\x80\x80"), "");
  EXPECT_EQ(xmlSayable("\xF5\x80\x80\x80"), "");
}

TEST(XmlSayableTest, SurrogatesAndCharactersThatAreNoneGo) {
  EXPECT_EQ(xmlSayable("\xED\xA0\x80"), "");
  EXPECT_EQ(xmlSayable("\xEF\xBF\xBE"), "");
  EXPECT_EQ(xmlSayable("\xEF\xBF\xBD"), "\xEF\xBF\xBD");
}

TEST(DocumentDateTest, BothFormsSayTheSame) {
  EXPECT_EQ(pdfOf("D:20240131235958+01'30'"), "D:20240131235958+01'30'");
  EXPECT_EQ(xmpOf("D:20240131235958+01'30'"), "2024-01-31T23:59:58+01:30");
  EXPECT_EQ(xmpOf("D:20240131235958-08'00'"), "2024-01-31T23:59:58-08:00");
  EXPECT_EQ(xmpOf("D:20240131235958Z"), "2024-01-31T23:59:58Z");
}

TEST(DocumentDateTest, PartsThatAreLeftOutAreTheFirst) {
  EXPECT_EQ(xmpOf("D:2024"), "2024-01-01T00:00:00Z");
  EXPECT_EQ(xmpOf("D:202405"), "2024-05-01T00:00:00Z");
  EXPECT_EQ(xmpOf("2024053017"), "2024-05-30T17:00:00Z");
  EXPECT_EQ(pdfOf("D:20240530"), "D:20240530000000Z");
}

TEST(DocumentDateTest, ZonesMayBeShort) {
  EXPECT_EQ(pdfOf("D:20240131235958+01"), "D:20240131235958+01'00'");
  EXPECT_EQ(pdfOf("D:20240131235958+01'30"), "D:20240131235958+01'30'");
  EXPECT_EQ(pdfOf("D:20240131235958Z00'00'"), "D:20240131235958Z");
}

TEST(DocumentDateTest, DaysThatAreNoneAreRefused) {
  EXPECT_EQ(xmpOf("D:20240229"), "2024-02-29T00:00:00Z");
  for (const char* const text : {"D:20230229", "D:20241301", "D:20240100", "D:20240431", "D:2024013124",
                                 "D:202401312360", "D:20240131235960"})
    EXPECT_EQ(pdfOf(text), "none") << text;
}

TEST(DocumentDateTest, OtherTextsAreRefused) {
  for (const char* const text : {"", "D:", "yesterday", "D:202", "D:20240131x", "D:20240131235958+01'30'x",
                                 "D:20240131235958+", "D:20240131235958+24'00'", "D:20240131235958Zulu"})
    EXPECT_EQ(pdfOf(text), "none") << text;
}

}  // namespace

}  // namespace quillpress::cli
