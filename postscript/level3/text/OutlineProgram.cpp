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

// A code that says nothing is better no printable one: readers take the code for the text.
std::uint32_t OutlineProgram::freeCode(const Part& part, std::uint32_t wanted, bool hasText) const {
  const auto isFree = [&](std::uint32_t code) {
    return code >= part.codes.size() || !part.codes[code].isUsed;
  };
  // Composite fonts number their glyphs in the order of their coming, .notdef first.
  if (form_ == Form::kComposite)
    return static_cast<std::uint32_t>(std::max<std::size_t>(part.codes.size(), 1));
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
  if (parts_.empty() || parts_.back().count == capacity() ||
      (form_ == Form::kComposite && parts_.back().codes.size() > capacity())) {
    parts_.push_back({file.reserve(), {}, 0});
  }
  Part& part = parts_.back();
  const std::uint32_t chosen = freeCode(part, code, !text.empty());
  if (part.codes.size() <= chosen) part.codes.resize(chosen + 1);
  part.codes[chosen] = {index, text, true};
  ++part.count;
  const GlyphSlot slot{part.number, chosen, static_cast<std::uint8_t>(form_ == Form::kSimple ? 1 : 2)};
  slots_.emplace(index, slot);
  return slot;
}

// Six letters that tell subsets apart, made from what is in this one.
std::string OutlineProgram::taggedName(const Part& part) const {
  Fingerprinter prints;
  prints.add(name_);
  for (const Used& used : part.codes) {
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
  for (std::size_t code = 0; code < part.codes.size(); ++code) {
    if (!part.codes[code].isUsed) continue;
    request.glyphs.push_back(part.codes[code].glyph);
    if (form_ == Form::kSimple) {
      request.encoding.push_back({static_cast<std::uint8_t>(code), part.codes[code].glyph});
    }
  }
  return font_->subset(request);
}

ObjectNumber OutlineProgram::writeToUnicode(PdfFile& file, const Part& part) const {
  ToUnicodeMap map(form_ == Form::kSimple ? 1 : 2);
  for (std::size_t code = 0; code < part.codes.size(); ++code) {
    map.add(static_cast<std::uint32_t>(code), part.codes[code].text);
  }
  if (map.isEmpty()) return 0;
  return file.addSharedStream("", map.cmap(), StreamData::kDeflate);
}

ObjectNumber OutlineProgram::writeDescriptor(PdfFile& file, const Part& part, const FontSubset& subset,
                                             const std::string& name) {
  Box bounds;
  for (const Used& used : part.codes) {
    if (used.isUsed) bounds.include(glyph(used.glyph).bounds());
  }
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
  std::size_t first = 0;
  while (first < part.codes.size() && !part.codes[first].isUsed) ++first;
  std::string widths = "[";
  std::string differences = "[";
  bool isInRow = false;
  for (std::size_t code = first; code < part.codes.size(); ++code) {
    const Used& used = part.codes[code];
    if (code > first) widths += ' ';
    appendNumber(widths, used.isUsed ? width(used.glyph) * kThousandths : 0, kEmPlaces);
    const auto place = subset.indices.find(used.glyph);
    const bool hasName = used.isUsed && place != subset.indices.end() && place->second < subset.names.size();
    if (!hasName) {
      isInRow = false;
      continue;
    }
    if (!isInRow) {
      if (differences.size() > 1) differences += ' ';
      appendInteger(differences, static_cast<std::int64_t>(code));
    }
    isInRow = true;
    appendName(differences, subset.names[place->second]);
  }
  DictionaryText text;
  const bool isTrueType = subset.kind == FontFileKind::kTrueType;
  text.name("Type", "Font").name("Subtype", isTrueType ? "TrueType" : "Type1").name("BaseFont", name);
  text.integer("FirstChar", static_cast<std::int64_t>(first));
  text.integer("LastChar", static_cast<std::int64_t>(part.codes.size()) - 1);
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
  std::string places;
  std::string widths = "[";
  bool isIdentity = true;
  bool isInRow = false;
  for (std::size_t code = 0; code < part.codes.size(); ++code) {
    const Used& used = part.codes[code];
    const auto found = subset.indices.find(used.glyph);
    const std::uint16_t place =
        used.isUsed && found != subset.indices.end() ? found->second : std::uint16_t{0};
    places += static_cast<char>(place >> 8);
    places += static_cast<char>(place & 0xff);
    isIdentity = isIdentity && place == code;
    if (!used.isUsed) continue;
    if (!isInRow) {
      appendInteger(widths, static_cast<std::int64_t>(code));
      widths += '[';
    } else {
      widths += ' ';
    }
    isInRow = true;
    appendNumber(widths, width(used.glyph) * kThousandths, kEmPlaces);
  }
  widths += isInRow ? "]]" : "]";
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
