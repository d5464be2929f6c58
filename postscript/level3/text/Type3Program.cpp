#include "postscript/level3/text/Type3Program.h"

#include <algorithm>
#include <cmath>

#include "postscript/level3/fonts/ToUnicodeMap.h"
#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

constexpr int kWidthPlaces = 5;

}  // namespace

Type3Program::Part& Type3Program::partFor(PdfFile& file, const Description& glyph, ObjectNumber home) {
  if (!glyph.keepsCode()) {
    if (!parts_.empty() && parts_.back().count < kCodes) return parts_.back();
  } else if (home != 0) {
    const auto fits = [&](const Part& each) { return each.isFree(glyph.code); };
    const auto own = std::ranges::find(parts_, home, &Part::number);
    if (own != parts_.end() && fits(*own)) return *own;
    const auto other = std::ranges::find_if(parts_, fits);
    if (other != parts_.end()) return *other;
  }
  return parts_.emplace_back(Part{file.reserve(), 0, {}, {}, {}});
}

GlyphSlot Type3Program::use(PdfFile& file, const Description& glyph, const ContentResources& resources,
                            ObjectNumber& home) {
  const std::tuple key(glyph.procedure, glyph.advance, glyph.text, glyph.keepsCode() ? glyph.code : kCodes);
  const auto known = slots_.find(key);
  if (known != slots_.end()) {
    if (home == 0) home = known->second.font;
    return known->second;
  }
  Part& part = partFor(file, glyph, home);
  if (glyph.keepsCode()) home = part.number;
  std::uint32_t code = glyph.code;
  if (code >= kCodes || !part.isFree(code)) {
    code = '!';
    while (code < kCodes && !part.isFree(code)) ++code;
    for (code = code % kCodes; !part.isFree(code);) ++code;
  }
  if (part.codes.size() <= code) part.codes.resize(code + 1);
  part.codes[code] = glyph;
  // One name a procedure: a glyph whose name stands for another procedure already gets one of its own.
  std::string& name = part.codes[code].name;
  if (name.empty()) name = "g" + std::to_string(code);
  const auto named = part.procedures.find(name);
  if (named != part.procedures.end() && named->second != glyph.procedure) name += "." + std::to_string(code);
  part.procedures.insert_or_assign(name, glyph.procedure);
  part.resources.add(resources);
  ++part.count;
  const GlyphSlot slot{part.number, code, 1};
  slots_.emplace(key, slot);
  return slot;
}

void Type3Program::writePart(PdfFile& file, const Part& part) const {
  std::size_t first = 0;
  while (part.codes[first].procedure == 0) ++first;
  Box bounds;
  DictionaryText procedures;
  for (const auto& [name, number] : part.procedures) procedures.reference(name, number);
  std::string widths = "[";
  std::string differences = "[";
  ToUnicodeMap map(1);
  bool isInRow = false;
  for (std::size_t code = first; code < part.codes.size(); ++code) {
    const Description& glyph = part.codes[code];
    if (code > first) widths += ' ';
    appendNumber(widths, glyph.advance, kWidthPlaces);
    if (glyph.procedure == 0) {
      isInRow = false;
      continue;
    }
    if (!isInRow) {
      if (differences.size() > 1) differences += ' ';
      appendInteger(differences, static_cast<std::int64_t>(code));
    }
    isInRow = true;
    appendName(differences, glyph.name);
    bounds.include(glyph.bounds);
    map.add(static_cast<std::uint32_t>(code), glyph.text);
  }
  if (bounds.isEmpty()) bounds = {0, 0, 0, 0};
  DictionaryText text;
  text.name("Type", "Font").name("Subtype", "Type3").box("FontBBox", bounds);
  std::string matrix;
  appendMatrix(matrix, matrix_);
  text.entry("FontMatrix", matrix).entry("CharProcs", procedures.text());
  text.entry("Encoding",
             DictionaryText().name("Type", "Encoding").entry("Differences", differences + "]").text());
  text.integer("FirstChar", static_cast<std::int64_t>(first));
  text.integer("LastChar", static_cast<std::int64_t>(part.codes.size()) - 1).entry("Widths", widths + "]");
  if (!name_.empty()) text.name("Name", name_);
  text.entry("Resources", part.resources.text());
  if (!map.isEmpty()) {
    text.reference("ToUnicode", file.addSharedStream("", map.cmap(), StreamData::kDeflate));
  }
  file.write(part.number, text.text());
}

void Type3Program::write(PdfFile& file) {
  for (const Part& part : parts_) writePart(file, part);
}

}  // namespace quillpress::level3
