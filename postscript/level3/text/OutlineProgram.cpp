#include "postscript/level3/text/OutlineProgram.h"

#include <algorithm>
#include <cmath>

#include "postscript/level3/fonts/ToUnicodeMap.h"
#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

constexpr double kThousandths = 1000;
// Places of widths, in thousandths of the em.
constexpr int kEmPlaces = 3;
constexpr int kSymbolic = 4;
constexpr std::size_t kTagLength = 6;
constexpr std::size_t kLongestName = 100;
// A character code that simple fonts do not use, lest a reader takes it for a blank to stretch.
constexpr double kMostBound = 32767;

double roundedWidth(double value) {
  const double scale = std::pow(10, kEmPlaces);
  return std::round(value * scale) / scale;
}

// Without the tag that the subset of another program has, "ABCDEF+".
std::string_view withoutTag(std::string_view name) {
  const bool hasTag = name.size() > kTagLength && name[kTagLength] == '+' &&
                      std::ranges::all_of(name.substr(0, kTagLength), [](char character) {
                        return character >= 'A' && character <= 'Z';
                      });
  return hasTag ? name.substr(kTagLength + 1) : name;
}

// Names of fonts in a PDF have no blanks and no odd characters.
std::string plainName(std::string_view name) {
  std::string plain;
  for (const char character : withoutTag(name).substr(0, kLongestName)) {
    const bool isPlain = character > ' ' && character < 0x7f &&
                         std::string_view("()<>[]{}/%#+,").find(character) == std::string_view::npos;
    if (isPlain) plain += character;
  }
  return plain.empty() ? "Font" : plain;
}

std::string_view subtypeOf(FontFileKind kind) {
  return kind == FontFileKind::kType1C ? "Type1C" : "CIDFontType0C";
}

}  // namespace

OutlineProgram::OutlineProgram(std::unique_ptr<OutlineFont> font, const std::string& name, double unit,
                               Form form)
    : font_(std::move(font)), name_(plainName(name)), unit_(unit), form_(form) {}

const Glyph& OutlineProgram::glyph(GlyphIndex index) {
  const auto known = glyphs_.find(index);
  if (known != glyphs_.end()) return known->second;
  Glyph glyph;
  try {
    glyph = font_->glyph(index);
  } catch (const FontError&) {
    ++brokenGlyphs_;
  }
  return glyphs_.emplace(index, std::move(glyph)).first->second;
}

double OutlineProgram::width(GlyphIndex index) {
  return roundedWidth(glyph(index).advance.x * unit_ * kThousandths) / kThousandths;
}

// Readers take the code for the text where nothing tells another one. A code of ours that says nothing is
// therefore better no printable one.
std::uint32_t OutlineProgram::freeCode(Part& part, std::uint32_t wanted, bool hasText) const {
  const auto isFree = [&](std::uint32_t code) { return !part.codes.contains(code); };
  if (form_ == Form::kComposite) {
    if (!hasText && wanted > 0 && wanted <= capacity() && isFree(wanted)) return wanted;
    while (!isFree(part.nextCid)) ++part.nextCid;
    return part.nextCid;
  }
  if (wanted < capacity() && isFree(wanted)) return wanted;
  for (std::uint32_t code = hasText ? '!' : 1; code < capacity(); ++code) {
    if (isFree(code)) return code;
  }
  std::uint32_t code = 0;
  while (!isFree(code)) ++code;
  return code;
}

GlyphSlot OutlineProgram::use(PdfFile& file, GlyphIndex index, std::uint32_t code,
                              const std::u32string& text) {
  const auto known = slots_.find(index);
  if (known != slots_.end()) return known->second;
  if (parts_.empty() || parts_.back().codes.size() == capacity()) parts_.push_back({file.reserve(), {}});
  Part& part = parts_.back();
  const std::uint32_t chosen = freeCode(part, code, !text.empty());
  part.codes.emplace(chosen, Used{index, text});
  const GlyphSlot slot{part.number, chosen, static_cast<std::uint8_t>(form_ == Form::kSimple ? 1 : 2)};
  slots_.emplace(index, slot);
  return slot;
}

// Six letters that tell subsets apart, made from what is in this one.
std::string OutlineProgram::taggedName(const Part& part) const {
  Fingerprinter prints;
  prints.add(name_);
  for (const auto& [code, used] : part.codes) {
    prints.add({reinterpret_cast<const char*>(&code), sizeof code});
    prints.add({reinterpret_cast<const char*>(&used.glyph), sizeof used.glyph});
  }
  std::uint64_t bits = prints.finish().low + part.number;
  std::string tag;
  for (std::size_t letter = 0; letter < kTagLength; ++letter, bits /= 26) {
    tag += static_cast<char>('A' + bits % 26);
  }
  return tag + '+' + name_;
}

FontSubset OutlineProgram::subsetOf(const Part& part, const std::string& name) const {
  SubsetRequest request;
  request.fontName = name;
  request.isComposite = form_ == Form::kComposite;
  for (const auto& [code, used] : part.codes) {
    request.glyphs.push_back(used.glyph);
    if (form_ == Form::kSimple) {
      request.encoding.push_back({static_cast<std::uint8_t>(code), used.glyph});
    } else {
      request.cids.push_back(static_cast<std::uint16_t>(code));
    }
  }
  return font_->subset(request);
}

ObjectNumber OutlineProgram::writeToUnicode(PdfFile& file, const Part& part) const {
  ToUnicodeMap map(form_ == Form::kSimple ? 1 : 2);
  for (const auto& [code, used] : part.codes) map.add(code, used.text);
  if (map.isEmpty()) return 0;
  return file.addSharedStream("", map.cmap(), StreamData::kDeflate);
}

ObjectNumber OutlineProgram::writeDescriptor(PdfFile& file, const Part& part, const FontSubset& subset,
                                             const std::string& name) {
  Box bounds;
  for (const auto& [code, used] : part.codes) bounds.include(glyph(used.glyph).bounds());
  if (bounds.isEmpty()) bounds = {0, 0, 0, 0};
  const double scale = unit_ * kThousandths;
  const auto bound = [&](double value) { return std::clamp(value * scale, -kMostBound, kMostBound); };
  const Box box{std::floor(bound(bounds.left)), std::floor(bound(bounds.bottom)),
                std::ceil(bound(bounds.right)), std::ceil(bound(bounds.top))};
  DictionaryText entries;
  if (subset.kind == FontFileKind::kTrueType) {
    entries.integer("Length1", static_cast<std::int64_t>(subset.bytes.size()));
  } else {
    entries.name("Subtype", subtypeOf(subset.kind));
  }
  const ObjectNumber program = file.addStream(entries.entries(), subset.bytes, StreamData::kDeflate);
  DictionaryText text;
  text.name("Type", "FontDescriptor").name("FontName", name).integer("Flags", kSymbolic).box("FontBBox", box);
  text.integer("ItalicAngle", 0).number("Ascent", box.top, 0).number("Descent", box.bottom, 0);
  text.number("CapHeight", box.top, 0).integer("StemV", 80);
  text.reference(subset.kind == FontFileKind::kTrueType ? "FontFile2" : "FontFile3", program);
  return file.add(text.text());
}

void OutlineProgram::writeSimple(PdfFile& file, const Part& part, const FontSubset& subset,
                                 const std::string& name) {
  const std::uint32_t first = part.codes.begin()->first;
  std::string widths = "[";
  std::string differences = "[";
  std::uint32_t widthsEnd = first;
  std::uint32_t namesEnd = first;
  for (const auto& [code, used] : part.codes) {
    for (; widthsEnd < code; ++widthsEnd) widths += widths.size() > 1 ? " 0" : "0";
    if (widths.size() > 1) widths += ' ';
    appendNumber(widths, width(used.glyph) * kThousandths, kEmPlaces);
    widthsEnd = code + 1;
    const auto place = subset.indices.find(used.glyph);
    if (place == subset.indices.end() || place->second >= subset.names.size()) continue;
    if (differences.size() == 1 || code != namesEnd) {
      if (differences.size() > 1) differences += ' ';
      appendInteger(differences, static_cast<std::int64_t>(code));
    }
    appendName(differences, subset.names[place->second]);
    namesEnd = code + 1;
  }
  DictionaryText text;
  const bool isTrueType = subset.kind == FontFileKind::kTrueType;
  text.name("Type", "Font").name("Subtype", isTrueType ? "TrueType" : "Type1").name("BaseFont", name);
  text.integer("FirstChar", first).integer("LastChar", part.codes.rbegin()->first);
  text.entry("Widths", widths + "]");
  text.reference("FontDescriptor", writeDescriptor(file, part, subset, name));
  if (!isTrueType) {
    text.entry("Encoding",
               DictionaryText().name("Type", "Encoding").entry("Differences", differences + "]").text());
  }
  if (const ObjectNumber map = writeToUnicode(file, part)) text.reference("ToUnicode", map);
  file.write(part.number, text.text());
}

void OutlineProgram::writeComposite(PdfFile& file, const Part& part, const FontSubset& subset,
                                    const std::string& name) {
  // CIDs are codes; what glyph a CID has is told where the subset has put it elsewhere.
  std::string places((std::size_t{part.codes.rbegin()->first} + 1) * 2, '\0');
  std::string widths = "[";
  bool isIdentity = true;
  std::uint32_t rowEnd = 0;
  for (const auto& [code, used] : part.codes) {
    const auto found = subset.indices.find(used.glyph);
    const std::uint16_t place = found != subset.indices.end() ? found->second : std::uint16_t{0};
    places[2 * code] = static_cast<char>(place >> 8);
    places[2 * code + 1] = static_cast<char>(place & 0xff);
    isIdentity = isIdentity && place == code;
    if (code == rowEnd) {
      widths += ' ';
    } else {
      if (rowEnd > 0) widths += ']';
      appendInteger(widths, code);
      widths += '[';
    }
    rowEnd = code + 1;
    appendNumber(widths, width(used.glyph) * kThousandths, kEmPlaces);
  }
  widths += "]]";
  const bool isTrueType = subset.kind == FontFileKind::kTrueType;
  DictionaryText descendant;
  descendant.name("Type", "Font").name("Subtype", isTrueType ? "CIDFontType2" : "CIDFontType0");
  descendant.name("BaseFont", name)
      .entry("CIDSystemInfo", "<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>");
  descendant.reference("FontDescriptor", writeDescriptor(file, part, subset, name));
  descendant.integer("DW", 0).entry("W", widths);
  if (isTrueType && isIdentity) descendant.name("CIDToGIDMap", "Identity");
  if (isTrueType && !isIdentity) {
    descendant.reference("CIDToGIDMap", file.addSharedStream("", places, StreamData::kDeflate));
  }
  DictionaryText text;
  text.name("Type", "Font").name("Subtype", "Type0").name("BaseFont", name).name("Encoding", "Identity-H");
  text.entry(
      "DescendantFonts", "[" + [&] {
        std::string reference;
        appendReference(reference, file.add(descendant.text()));
        return reference;
      }() + "]");
  if (const ObjectNumber map = writeToUnicode(file, part)) text.reference("ToUnicode", map);
  file.write(part.number, text.text());
}

void OutlineProgram::writePart(PdfFile& file, const Part& part) {
  const std::string name = taggedName(part);
  FontSubset subset;
  try {
    subset = subsetOf(part, name);
  } catch (const FontError&) {
    // A font dictionary without a program: readers show another font at the right places.
    file.write(
        part.number,
        DictionaryText().name("Type", "Font").name("Subtype", "Type1").name("BaseFont", "Helvetica").text());
    return;
  }
  if (form_ == Form::kSimple) {
    writeSimple(file, part, subset, name);
  } else {
    writeComposite(file, part, subset, name);
  }
}

void OutlineProgram::write(PdfFile& file) {
  for (const Part& part : parts_) writePart(file, part);
}

}  // namespace quillpress::level3
