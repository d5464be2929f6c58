#include <gtest/gtest.h>

#include "umpd/rules/XmpPacket.h"

namespace quillpress::driver {
namespace {

constexpr wchar_t kHeader[] =
    L"<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
    L"<x:xmpmeta xmlns:x='adobe:ns:meta/'>\n"
    L"<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' "
    L"xmlns:iX='http://ns.adobe.com/iX/1.0/'>\n";

constexpr wchar_t kPdfStart[] = L"<rdf:Description rdf:about='' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'\n";

constexpr wchar_t kBasicWithoutAnything[] =
    L"<rdf:Description rdf:about='' xmlns:xap='http://ns.adobe.com/xap/1.0/'\n"
    L"xap:ModifyDate=''\n"
    L"xap:CreateDate=''\n"
    L"/>\n";

constexpr wchar_t kDublinCoreStart[] =
    L"<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'>\n";

constexpr wchar_t kTail[] =
    L"<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id/'\n"
    L"pdfaid:part='1'\n"
    L"pdfaid:conformance='B'\n"
    L"/>\n"
    L"</rdf:RDF>\n"
    L"</x:xmpmeta>\n"
    L"<?xpacket end='w'?>\n";

// The packet with these blocks around that of the creator tool and the dates, which are empty.
std::wstring packetWith(const std::wstring& pdfBlock, const std::wstring& dublinCoreBlock) {
  return kHeader + pdfBlock + kBasicWithoutAnything + dublinCoreBlock + kTail;
}

TEST(XmpPacketTest, HoldsEverythingInItsOrder) {
  const XmpContent content{L"A title",
                           L"An author",
                           L"A subject",
                           L"Some, keywords",
                           L"A tool",
                           L"A producer",
                           L"2009-02-03T04:05:06Z",
                           L"2010-01-01T00:00:00Z"};
  EXPECT_EQ(xmpPacket(content),
            L"<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
            L"<x:xmpmeta xmlns:x='adobe:ns:meta/'>\n"
            L"<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' "
            L"xmlns:iX='http://ns.adobe.com/iX/1.0/'>\n"
            L"<rdf:Description rdf:about='' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'\n"
            L"pdf:Producer='A producer'\n"
            L"pdf:Keywords='Some, keywords'\n"
            L"/>\n"
            L"<rdf:Description rdf:about='' xmlns:xap='http://ns.adobe.com/xap/1.0/'\n"
            L"xap:CreatorTool='A tool'\n"
            L"xap:ModifyDate='2010-01-01T00:00:00Z'\n"
            L"xap:CreateDate='2009-02-03T04:05:06Z'\n"
            L"/>\n"
            L"<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'>\n"
            L"<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>A title</rdf:li></rdf:Alt></dc:title>\n"
            L"<dc:creator><rdf:Seq><rdf:li>An author</rdf:li></rdf:Seq></dc:creator>\n"
            L"<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>A subject</rdf:li></rdf:Alt>"
            L"</dc:description>\n"
            L"</rdf:Description>\n"
            L"<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id/'\n"
            L"pdfaid:part='1'\n"
            L"pdfaid:conformance='B'\n"
            L"/>\n"
            L"</rdf:RDF>\n"
            L"</x:xmpmeta>\n"
            L"<?xpacket end='w'?>\n");
}

TEST(XmpPacketTest, WithoutContentOnlyTheDatesBlockStays) {
  EXPECT_EQ(xmpPacket({}), packetWith(L"", L""));
}

TEST(XmpPacketTest, TheProducerAloneMakesItsBlock) {
  XmpContent content;
  content.producer = L"P";
  EXPECT_EQ(xmpPacket(content), packetWith(std::wstring(kPdfStart) + L"pdf:Producer='P'\n/>\n", L""));
}

TEST(XmpPacketTest, KeywordsAloneMakeTheSameBlock) {
  XmpContent content;
  content.keywords = L"K";
  EXPECT_EQ(xmpPacket(content), packetWith(std::wstring(kPdfStart) + L"pdf:Keywords='K'\n/>\n", L""));
}

TEST(XmpPacketTest, EachDublinCoreTextAloneMakesTheirBlock) {
  const auto block = [](const wchar_t* line) {
    return packetWith(L"", std::wstring(kDublinCoreStart) + line + L"</rdf:Description>\n");
  };
  XmpContent title;
  title.title = L"T";
  EXPECT_EQ(xmpPacket(title),
            block(L"<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>T</rdf:li></rdf:Alt></dc:title>\n"));
  XmpContent author;
  author.author = L"A";
  EXPECT_EQ(xmpPacket(author), block(L"<dc:creator><rdf:Seq><rdf:li>A</rdf:li></rdf:Seq></dc:creator>\n"));
  XmpContent subject;
  subject.subject = L"S";
  EXPECT_EQ(xmpPacket(subject), block(L"<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>S</rdf:li>"
                                      L"</rdf:Alt></dc:description>\n"));
}

TEST(XmpPacketTest, TextsAreEscapedEverywhere) {
  const XmpContent content{L"t'\t", L"a<", L"s>", L"k&", L"c\"", L"p'", L"", L""};
  const std::wstring packet = xmpPacket(content);
  for (const wchar_t* part : {L">t&apos;&#x9;<", L">a&lt;<", L">s&gt;<", L"pdf:Keywords='k&amp;'\n",
                              L"xap:CreatorTool='c&quot;'\n", L"pdf:Producer='p&apos;'\n"}) {
    EXPECT_NE(packet.find(part), std::wstring::npos) << part;
  }
}

TEST(XmpPacketTest, DatesAreWrittenAsTheyAre) {
  XmpContent content;
  content.createDate = L"<1>";
  content.modifyDate = L"&2";
  const std::wstring packet = xmpPacket(content);
  EXPECT_NE(packet.find(L"xap:ModifyDate='&2'\nxap:CreateDate='<1>'\n"), std::wstring::npos);
}

TEST(XmpPacketTest, LinesEndWithALineFeedAlone) {
  EXPECT_EQ(xmpPacket({}).find(L'\r'), std::wstring::npos);
}

}  // namespace
}  // namespace quillpress::driver
