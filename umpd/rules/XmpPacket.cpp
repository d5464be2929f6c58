#include "umpd/rules/XmpPacket.h"

#include <array>
#include <cstdlib>
#include <cwchar>

#include "umpd/rules/Text.h"

namespace quillpress::driver {
namespace {
// Null for characters that stand for themselves.
const wchar_t* entityOf(wchar_t character) {
  switch (character) {
    case L'"':
      return L"&quot;";
    case L'&':
      return L"&amp;";
    case L'\'':
      return L"&apos;";
    case L'<':
      return L"&lt;";
    case L'>':
      return L"&gt;";
    default:
      return nullptr;
  }
}

// REQUIRES: character < 32
std::wstring controlReference(wchar_t character) {
  // Below 32 the first of two digits is a 1. Kept: also of the characters that XML 1.0 has no escape for
  // (EscapeTest.EveryControlCharacterBecomesAHexadecimalReferenceInLowerCase).
  constexpr wchar_t kDigits[] = L"0123456789abcdef";
  std::wstring text = L"&#x";
  if (character >= 16) text += L'1';
  return text + kDigits[character % 16] + L';';
}

std::wstring twoDigits(long number) {
  return (number < 10 ? L"0" : L"") + std::to_wstring(number);
}

std::wstring offset(long biasMinutes) {
  // The bias is what is to be added to the local time, the offset what has been, hence the turned sign below.
  if (biasMinutes == 0) return L"Z";
  const std::ldiv_t parts = std::ldiv(std::labs(biasMinutes), 60);
  return (biasMinutes > 0 ? L"-" : L"+") + twoDigits(parts.quot) + L":" + twoDigits(parts.rem);
}

// The identifier is the same in all packets: programs that know nothing of PDF find the metadata by it.
constexpr std::wstring_view kHeader =
    L"<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
    L"<x:xmpmeta xmlns:x='adobe:ns:meta/'>\n"
    L"<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' "
    L"xmlns:iX='http://ns.adobe.com/iX/1.0/'>\n";

constexpr std::wstring_view kTail =
    // PDF/A wants its part and level as the packet declares them here, whatever else is known of the
    // document.
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
  // An element without properties is valid but says nothing.
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

std::wstring xmlEscape(std::wstring_view text) {
  std::wstring escaped;
  for (const wchar_t character : text) {
    if (const wchar_t* entity = entityOf(character)) {
      escaped += entity;
    } else if (character < L' ') {
      escaped += controlReference(character);
    } else {
      escaped += character;
    }
  }
  return escaped;
}

std::wstring formatXmpDate(const std::tm& localTime, long biasMinutes) {
  std::array<wchar_t, 48> text{};
  // Numbers only, so the locale of the host process does not matter.
  if (std::wcsftime(text.data(), text.size(), L"%Y-%m-%dT%H:%M:%S", &localTime) == 0) return {};
  return text.data() + offset(biasMinutes);
}

std::wstring xmpPacket(const XmpContent& content) {
  return std::wstring(kHeader) + pdfBlock(content) + basicBlock(content) + dublinCoreBlock(content) +
         std::wstring(kTail);
}

XmpContent xmpContentOf(const DocumentInfo& info, std::wstring_view documentName, std::wstring_view now) {
  XmpContent content;
  // Kept: switching the information off hides title and author, but not subject and keywords
  // (DocumentInfoTest.SwitchedOffItHidesTitleAndAuthorOnly).
  if (info.enable != 0) {
    content.title = info.title;
    content.author = info.author;
  }
  // After the switch above, so a document that hides its title is called by its name all the same.
  if (content.title.empty()) content.title = lastComponent(documentName, L"\\/");
  content.subject = info.subject;
  content.keywords = info.keywords;
  // Kept: creator, producer and dates of the settings are not used
  // (DocumentInfoTest.CreatorProducerAndDatesOfTheSettingsAreNotUsed).
  content.creatorTool = L"Quillpress";
  content.producer = L"Quillpress";
  content.createDate = now;
  content.modifyDate = now;
  return content;
}
}  // namespace quillpress::driver
