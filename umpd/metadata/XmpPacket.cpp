#include "umpd/metadata/XmpPacket.h"

#include <string_view>

#include "umpd/metadata/XmlEscape.h"

namespace quillpress {
namespace {

constexpr std::wstring_view kHeader =
    L"<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
    L"<x:xmpmeta xmlns:x='adobe:ns:meta/'>\n"
    L"<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' "
    L"xmlns:iX='http://ns.adobe.com/iX/1.0/'>\n";

constexpr std::wstring_view kTail =
    L"<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id/'\n"
    L"pdfaid:part='1'\n"
    L"pdfaid:conformance='B'\n"
    L"/>\n"
    L"</rdf:RDF>\n"
    L"</x:xmpmeta>\n"
    L"<?xpacket end='w'?>\n";

std::wstring attribute(std::wstring_view name, std::wstring_view value) {
  if (value.empty()) return {};
  return std::wstring(name) + L"='" + xmlEscape(value) + L"'\n";
}

// `open` and `close` are the element's tags with those of its containers.
std::wstring element(std::wstring_view open, std::wstring_view value, std::wstring_view close) {
  if (value.empty()) return {};
  return std::wstring(open) + xmlEscape(value) + std::wstring(close) + L"\n";
}

std::wstring pdfBlock(const XmpContent& content) {
  if (content.producer.empty() && content.keywords.empty()) return {};
  return L"<rdf:Description rdf:about='' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'\n" +
         attribute(L"pdf:Producer", content.producer) + attribute(L"pdf:Keywords", content.keywords) +
         L"/>\n";
}

// Dates are written as they are, empty ones too.
std::wstring basicBlock(const XmpContent& content) {
  return L"<rdf:Description rdf:about='' xmlns:xap='http://ns.adobe.com/xap/1.0/'\n" +
         attribute(L"xap:CreatorTool", content.creatorTool) + L"xap:ModifyDate='" + content.modifyDate +
         L"'\n" + L"xap:CreateDate='" + content.createDate + L"'\n" + L"/>\n";
}

std::wstring dublinCoreBlock(const XmpContent& content) {
  if (content.title.empty() && content.author.empty() && content.subject.empty()) return {};
  return L"<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'>\n" +
         element(L"<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>", content.title,
                 L"</rdf:li></rdf:Alt></dc:title>") +
         element(L"<dc:creator><rdf:Seq><rdf:li>", content.author, L"</rdf:li></rdf:Seq></dc:creator>") +
         element(L"<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>", content.subject,
                 L"</rdf:li></rdf:Alt></dc:description>") +
         L"</rdf:Description>\n";
}

}  // namespace

std::wstring xmpPacket(const XmpContent& content) {
  return std::wstring(kHeader) + pdfBlock(content) + basicBlock(content) + dublinCoreBlock(content) +
         std::wstring(kTail);
}

}  // namespace quillpress
