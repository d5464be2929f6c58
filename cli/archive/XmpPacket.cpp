#include "cli/archive/XmpPacket.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

// How many bytes the character of UTF-8 at the front takes; 0 when it is none that XML can say.
std::size_t sayableLength(std::string_view text) {
  const auto byteAt = [&text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
  const unsigned char first = byteAt(0);
  if (first < 0x80) return first >= 0x20 || first == '\t' || first == '\n' || first == '\r' ? 1 : 0;
  const std::size_t length = first >= 0xF0 ? 4 : (first >= 0xE0 ? 3 : 2);
  if (first < 0xC2 || first > 0xF4 || text.size() < length) return 0;
  std::uint32_t code = first & (0xFFU >> (length + 1));
  for (std::size_t index = 1; index < length; ++index) {
    if ((byteAt(index) & 0xC0U) != 0x80) return 0;
    code = code << 6U | (byteAt(index) & 0x3FU);
  }
  constexpr std::array<std::uint32_t, 5> kLeast{0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  const bool isNone = code == 0xFFFE || code == 0xFFFF || code > 0x10FFFF;
  return code < kLeast[length] || isSurrogate || isNone ? 0 : length;
}

std::string escaped(std::string_view text) {
  std::string result;
  for (const char character : text) {
    switch (character) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      // A reader of XML would make a line feed of it.
      case '\r':
        result += "&#13;";
        break;
      default:
        result += character;
    }
  }
  return result;
}

class PacketWriter {
 public:
  void line(std::string_view text) { text_.append(text).append("\n"); }

  void simple(std::string_view name, const std::optional<std::string>& value) {
    if (value) line("<" + std::string(name) + ">" + escaped(*value) + "</" + std::string(name) + ">");
  }

  // A list of one item: a text in the default language, or the only one in an order.
  void listed(std::string_view name, const char* list, const char* item,
              const std::optional<std::string>& value) {
    if (!value) return;
    const std::string element(name);
    line("<" + element + "><rdf:" + list + "><rdf:li" + item + ">" + escaped(*value) +
         "</rdf:li></rdf:" + list + "></" + element + ">");
  }

  // Room for programs that change the packet in place.
  void pad() {
    constexpr std::size_t kLines = 20;
    constexpr std::size_t kLineLength = 99;
    for (std::size_t count = 0; count < kLines; ++count) line(std::string(kLineLength, ' '));
  }

  std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

// Reads the numbers of a date from its front.
class DateReader {
 public:
  explicit DateReader(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool isAtEnd() const { return rest_.empty(); }
  [[nodiscard]] char next() const { return rest_.empty() ? '\0' : rest_.front(); }

  bool skip(std::string_view text) {
    if (!rest_.starts_with(text)) return false;
    rest_.remove_prefix(text.size());
    return true;
  }

  // `count` digits between `least` and `most`, or nothing.
  std::optional<int> number(std::size_t count, int least, int most) {
    if (rest_.size() < count) return std::nullopt;
    int value = 0;
    for (const char digit : rest_.substr(0, count)) {
      if (!isDigit(digit)) return std::nullopt;
      value = value * 10 + (digit - '0');
    }
    if (value < least || value > most) return std::nullopt;
    rest_.remove_prefix(count);
    return value;
  }

 private:
  std::string_view rest_;
};

struct Zone {
  char sign = 'Z';
  int hours = 0;
  int minutes = 0;
};

std::optional<Zone> readZone(DateReader& reader) {
  Zone zone;
  if (reader.isAtEnd()) return zone;
  const char sign = reader.next();
  if (reader.skip("Z")) {
    // Some programs write what universal time differs from itself by.
    if (!reader.isAtEnd() && !reader.skip("00'00'") && !reader.skip("00'00")) return std::nullopt;
    return zone;
  }
  if (!reader.skip("+") && !reader.skip("-")) return std::nullopt;
  const std::optional<int> hours = reader.number(2, 0, 23);
  if (!hours) return std::nullopt;
  reader.skip("'");
  zone = {sign, *hours, reader.isAtEnd() ? 0 : reader.number(2, 0, 59).value_or(-1)};
  reader.skip("'");
  if (zone.minutes < 0) return std::nullopt;
  return zone;
}

DocumentDate dateText(const std::array<int, 6>& parts, const Zone& zone) {
  std::array<char, 80> pdf{};
  std::array<char, 80> xmp{};
  std::snprintf(pdf.data(), pdf.size(), "D:%04d%02d%02d%02d%02d%02d", parts[0], parts[1], parts[2], parts[3],
                parts[4], parts[5]);
  std::snprintf(xmp.data(), xmp.size(), "%04d-%02d-%02dT%02d:%02d:%02d", parts[0], parts[1], parts[2],
                parts[3], parts[4], parts[5]);
  if (zone.sign == 'Z') return {std::string(pdf.data()) + "Z", std::string(xmp.data()) + "Z"};
  std::array<char, 40> pdfZone{};
  std::array<char, 40> xmpZone{};
  std::snprintf(pdfZone.data(), pdfZone.size(), "%c%02d'%02d'", zone.sign, zone.hours, zone.minutes);
  std::snprintf(xmpZone.data(), xmpZone.size(), "%c%02d:%02d", zone.sign, zone.hours, zone.minutes);
  return {std::string(pdf.data()) + pdfZone.data(), std::string(xmp.data()) + xmpZone.data()};
}

int daysIn(int month, int year) {
  constexpr std::array kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool isLeapYear = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return kDays[static_cast<std::size_t>(month - 1)] + (month == 2 && isLeapYear ? 1 : 0);
}

}  // namespace

std::string xmlSayable(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t length = sayableLength(text);
    result += text.substr(0, length);
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return result;
}

std::string xmpPacket(const XmpFacts& facts, ArchivePart part) {
  PacketWriter packet;
  packet.line("<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>");
  packet.line("<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">");
  packet.line("<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">");
  packet.line("<rdf:Description rdf:about=\"\"");
  packet.line("  xmlns:dc=\"http://purl.org/dc/elements/1.1/\"");
  packet.line("  xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\"");
  packet.line("  xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\"");
  packet.line("  xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">");
  packet.simple("pdfaid:part", std::to_string(static_cast<int>(part)));
  packet.simple("pdfaid:conformance", "B");
  packet.simple("dc:format", "application/pdf");
  packet.listed("dc:title", "Alt", " xml:lang=\"x-default\"", facts.title);
  packet.listed("dc:creator", "Seq", "", facts.author);
  packet.listed("dc:description", "Alt", " xml:lang=\"x-default\"", facts.subject);
  packet.simple("pdf:Keywords", facts.keywords);
  packet.simple("pdf:Producer", facts.producer);
  packet.simple("xmp:CreatorTool", facts.creator);
  packet.simple("xmp:CreateDate", facts.creationDate);
  packet.simple("xmp:ModifyDate", facts.modificationDate);
  packet.line("</rdf:Description>");
  packet.line("</rdf:RDF>");
  packet.line("</x:xmpmeta>");
  packet.pad();
  return packet.take() + "<?xpacket end=\"w\"?>";
}

std::optional<DocumentDate> documentDateOf(std::string_view text) {
  DateReader reader(text);
  reader.skip("D:");
  const std::optional<int> year = reader.number(4, 0, 9999);
  if (!year) return std::nullopt;
  std::array<int, 6> parts{*year, 1, 1, 0, 0, 0};
  constexpr std::array kLeast{0, 1, 1, 0, 0, 0};
  for (std::size_t index = 1; index < parts.size() && isDigit(reader.next()); ++index) {
    const std::array most{9999, 12, daysIn(parts[1], parts[0]), 23, 59, 59};
    const std::optional<int> part = reader.number(2, kLeast[index], most[index]);
    if (!part) return std::nullopt;
    parts[index] = *part;
  }
  const std::optional<Zone> zone = readZone(reader);
  if (!zone || !reader.isAtEnd()) return std::nullopt;
  return dateText(parts, *zone);
}

}  // namespace quillpress::cli
