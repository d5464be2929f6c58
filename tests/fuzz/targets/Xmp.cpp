// XMP packets, read back by an XML parser: every text comes out as it went in.

#include <expat.h>

#include <ctime>
#include <map>
#include <string>

#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Target.h"
#include "tests/fuzz/support/WideText.h"
#include "umpd/rules/XmpPacket.h"

namespace quillpress::fuzz {

namespace {

using driver::DocumentInfo;
using driver::XmpContent;

// What a packet holds, by the names of attributes and of the elements around a list's item.
class Packet {
 public:
  explicit Packet(const std::string& text) {
    XML_Parser parser = XML_ParserCreate("UTF-8");
    FUZZ_CHECK(parser != nullptr);
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, begin, end);
    XML_SetCharacterDataHandler(parser, take);
    const XML_Status status = XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1);
    if (status != XML_STATUS_OK)
      FUZZ_CHECK_EQUAL(std::string(XML_ErrorString(XML_GetErrorCode(parser))), text);
    XML_ParserFree(parser);
  }

  std::string operator[](const std::string& name) const {
    const auto found = texts_.find(name);
    return found == texts_.end() ? std::string() : found->second;
  }

 private:
  static void begin(void* packet, const char* name, const char** attributes) {
    auto& self = *static_cast<Packet*>(packet);
    for (; *attributes != nullptr; attributes += 2) self.texts_[attributes[0]] = attributes[1];
    const std::string_view element = name;
    if (element.starts_with("dc:")) self.list_ = element;
    self.isItem_ = element == "rdf:li";
  }

  static void end(void* packet, const char* /*name*/) { static_cast<Packet*>(packet)->isItem_ = false; }

  static void take(void* packet, const char* text, int length) {
    auto& self = *static_cast<Packet*>(packet);
    if (self.isItem_) self.texts_[self.list_].append(text, static_cast<std::size_t>(length));
  }

  std::map<std::string, std::string> texts_;
  std::string list_;
  bool isItem_ = false;
};

// XML 1.0 has no other characters: control characters and halves of pairs cannot be written at all.
bool isXmlCharacter(wchar_t character) {
  return character == L'\t' || character == L'\n' || character == L'\r' ||
         (character >= 0x20 && character < 0xD800) || (character >= 0xE000 && character < 0xFFFE);
}

std::wstring xmlText(Choices& choices) {
  std::wstring text = wideText(choices, 60);
  std::erase_if(text, [](wchar_t character) { return !isXmlCharacter(character); });
  return text;
}

DocumentInfo infoOf(Choices& choices) {
  DocumentInfo info;
  info.enable = choices.flag() ? 1 : 0;
  for (std::wstring* text : {&info.title, &info.author, &info.subject, &info.keywords})
    *text = xmlText(choices);
  return info;
}

// As Windows tells the time.
std::wstring now(Choices& choices) {
  std::tm time{};
  time.tm_year = static_cast<int>(choices.below(29227)) + 1601 - 1900;
  time.tm_mon = static_cast<int>(choices.below(12));
  time.tm_mday = static_cast<int>(choices.below(31)) + 1;
  time.tm_hour = static_cast<int>(choices.below(24));
  time.tm_min = static_cast<int>(choices.below(60));
  time.tm_sec = static_cast<int>(choices.below(61));
  std::wstring text = driver::formatXmpDate(time, choices.number<std::int16_t>());
  FUZZ_CHECK(text.size() >= 20 && text.find(L'T') != std::wstring::npos);
  return text;
}

}  // namespace

void runXmp(Input input) {
  Choices choices(input);
  const DocumentInfo info = infoOf(choices);
  const std::wstring date = now(choices);
  const XmpContent content = driver::xmpContentOf(info, xmlText(choices), date);
  const Packet packet(utf8Of(driver::xmpPacket(content)));
  FUZZ_CHECK_EQUAL(packet["dc:title"], utf8Of(content.title));
  FUZZ_CHECK_EQUAL(packet["dc:creator"], utf8Of(content.author));
  FUZZ_CHECK_EQUAL(packet["dc:description"], utf8Of(content.subject));
  FUZZ_CHECK_EQUAL(packet["pdf:Keywords"], utf8Of(content.keywords));
  FUZZ_CHECK_EQUAL(packet["pdf:Producer"], utf8Of(content.producer));
  FUZZ_CHECK_EQUAL(packet["xap:CreatorTool"], utf8Of(content.creatorTool));
  FUZZ_CHECK_EQUAL(packet["xap:CreateDate"], utf8Of(date));
  FUZZ_CHECK_EQUAL(packet["xap:ModifyDate"], utf8Of(date));
  FUZZ_CHECK_EQUAL(packet["pdfaid:conformance"], std::string("B"));

  // What XML has no characters for must not break the escaping either.
  const std::wstring any = wideText(choices, 200);
  const std::wstring escaped = driver::xmlEscape(any);
  FUZZ_CHECK(escaped.size() >= any.size() && escaped.find_first_of(L"<>'\"") == std::wstring::npos);
}

}  // namespace quillpress::fuzz
