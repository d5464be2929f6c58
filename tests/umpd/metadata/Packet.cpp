#include "tests/umpd/metadata/Packet.h"

#include <gtest/gtest.h>

namespace quillpress::harness {

std::wstring between(const std::wstring& text, const std::wstring& before, const std::wstring& after) {
  const std::size_t found = text.find(before);
  const std::size_t begin = found + before.size();
  const std::size_t end = found == std::wstring::npos ? found : text.find(after, begin);
  if (end != std::wstring::npos) return text.substr(begin, end - begin);
  ADD_FAILURE() << ::testing::PrintToString(before) << " is not in " << ::testing::PrintToString(text);
  return {};
}

std::wstring dateOf(const std::wstring& packet) {
  std::wstring modified = between(packet, L"xap:ModifyDate='", L"'");
  EXPECT_EQ(modified, between(packet, L"xap:CreateDate='", L"'"));
  return modified;
}

std::wstring withoutDates(const std::wstring& packet) {
  std::wstring result = packet;
  const std::wstring date = dateOf(packet);
  if (date.empty()) return result;
  for (std::size_t i = result.find(date); i != std::wstring::npos; i = result.find(date, i)) {
    result.replace(i, date.size(), L"DATE");
  }
  return result;
}

std::wstring packetWith(const std::wstring& pdfProperties, const std::wstring& dublinCore) {
  return L"<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
         L"<x:xmpmeta xmlns:x='adobe:ns:meta/'>\n"
         L"<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' "
         L"xmlns:iX='http://ns.adobe.com/iX/1.0/'>\n"
         L"<rdf:Description rdf:about='' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'\n" +
         pdfProperties +
         L"/>\n"
         L"<rdf:Description rdf:about='' xmlns:xap='http://ns.adobe.com/xap/1.0/'\n"
         L"xap:CreatorTool='Quillpress'\n"
         L"xap:ModifyDate='DATE'\n"
         L"xap:CreateDate='DATE'\n"
         L"/>\n" +
         dublinCore +
         L"<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id/'\n"
         L"pdfaid:part='1'\n"
         L"pdfaid:conformance='B'\n"
         L"/>\n"
         L"</rdf:RDF>\n"
         L"</x:xmpmeta>\n"
         L"<?xpacket end='w'?>\n";
}

std::wstring dublinCore(const std::wstring& elements) {
  return L"<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'>\n" + elements +
         L"</rdf:Description>\n";
}

std::wstring titleElement(const std::wstring& text) {
  return L"<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>" + text + L"</rdf:li></rdf:Alt></dc:title>\n";
}

std::wstring creatorElement(const std::wstring& text) {
  return L"<dc:creator><rdf:Seq><rdf:li>" + text + L"</rdf:li></rdf:Seq></dc:creator>\n";
}

std::wstring descriptionElement(const std::wstring& text) {
  return L"<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>" + text +
         L"</rdf:li></rdf:Alt></dc:description>\n";
}

}  // namespace quillpress::harness
