#include "cli/archive/ArchiveFonts.h"

#include <cstddef>
#include <set>
#include <string>

#include "cli/base/Errors.h"

namespace quillpress::cli {

namespace {

// "/A/B": the glyphs of a Type 1 subset. A code stands for each of them.
std::string glyphNames(QPDFObjectHandle font) {
  std::set<std::string> names;
  QPDFObjectHandle differences = font.getKey("/Encoding").isDictionary()
                                     ? font.getKey("/Encoding").getKey("/Differences")
                                     : QPDFObjectHandle::newArray();
  for (const QPDFObjectHandle& item : differences.aitems()) {
    QPDFObjectHandle name = item;
    if (name.isName() && name.getName() != "/.notdef") names.insert(name.getName());
  }
  std::string text;
  for (const std::string& name : names) text += name;
  return text;
}

// The CIDs that have a width, as bits from the highest of the first byte on; CID 0 is always there.
std::string cidSet(QPDFObjectHandle widths) {
  constexpr std::size_t kBits = 8;
  constexpr unsigned kHighest = 0x80;
  std::string bits(1, static_cast<char>(kHighest));
  std::size_t cid = 0;
  for (const QPDFObjectHandle& item : widths.aitems()) {
    QPDFObjectHandle value = item;
    if (value.isInteger()) cid = static_cast<std::size_t>(value.getUIntValue());
    if (!value.isArray()) continue;
    for (int count = value.getArrayNItems(); count > 0; --count, ++cid) {
      if (bits.size() <= cid / kBits) bits.resize(cid / kBits + 1, '\0');
      char& byte = bits[cid / kBits];
      byte = static_cast<char>(static_cast<unsigned char>(byte) | kHighest >> cid % kBits);
    }
  }
  return bits;
}

}  // namespace

void completeFont(QPDF& pdf, QPDFObjectHandle font, ArchivePart part) {
  QPDFObjectHandle kind = font.getKey("/Subtype");
  if (kind.isNameAndEquals("/Type0") || kind.isNameAndEquals("/Type3")) return;
  QPDFObjectHandle descriptor = font.getKey("/FontDescriptor");
  const bool hasProgram =
      descriptor.isDictionary() &&
      (descriptor.hasKey("/FontFile") || descriptor.hasKey("/FontFile2") || descriptor.hasKey("/FontFile3"));
  if (!hasProgram) {
    QPDFObjectHandle name = font.getKey("/BaseFont");
    throw ArchiveError("the font " + (name.isName() ? name.getName().substr(1) : "") +
                       ", which is not embedded");
  }
  // Later parts leave it to the program.
  if (part != ArchivePart::k1b) return;
  if (kind.isNameAndEquals("/Type1")) {
    descriptor.replaceKey("/CharSet", QPDFObjectHandle::newString(glyphNames(font)));
  } else if (!kind.isNameAndEquals("/TrueType")) {
    descriptor.replaceKey("/CIDSet", QPDFObjectHandle::newStream(&pdf, cidSet(font.getKey("/W"))));
  }
}

}  // namespace quillpress::cli
