#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "postscript/level3/fonts/OutlineFont.h"
#include "postscript/level3/pdf/PdfDocument.h"

namespace quillpress::level3 {

// Where a glyph stands in the fonts of the PDF.
struct GlyphSlot {
  ObjectNumber font = 0;  // 0: none yet
  std::uint32_t code = 0;
  std::uint8_t codeBytes = 1;
};

// An outline font on its way into the file: its glyphs come as the job shows them, and when the job is over a
// subset of those is written. However many instances, copies and re-encodings the job makes of one font, they
// share a program.
class OutlineProgram {
 public:
  enum class Form {
    kSimple,     // fonts of 256 codes each, a new one when the last is full
    kComposite,  // one font of 65535 codes
  };

  // `unit` is the em's share that one unit of character space is: 0.001 for most Type 1 fonts.
  OutlineProgram(std::unique_ptr<OutlineFont> font, const std::string& name, double unit, Form form);

  OutlineFont& font() { return *font_; }
  double unit() const { return unit_; }

  // The glyph as the font has it; nothing in it when its description is broken, which is counted.
  const Glyph& glyph(GlyphIndex index);
  // To be called when the font has got another description for the glyph.
  void reload(GlyphIndex index) { glyphs_.erase(index); }
  std::size_t brokenGlyphs() const { return brokenGlyphs_; }
  // Text space units at font size 1, as Widths will say it.
  double width(GlyphIndex index);

  // For a glyph that the job shows by no code.
  static constexpr std::uint32_t kNoCode = 0xffffffff;
  // The slot of a glyph, made when it is first used; at the code that the job shows it by, if there is one
  // and it is free. `text` is what it means to a reader.
  GlyphSlot use(PdfFile& file, GlyphIndex index, std::uint32_t code, const std::u32string& text);

  // Writes the fonts, with their subsets.
  void write(PdfFile& file);

 private:
  struct Used {
    GlyphIndex glyph = 0;
    std::u32string text;
  };
  // A font of the PDF.
  struct Part {
    ObjectNumber number = 0;
    std::map<std::uint32_t, Used> codes;
    // In a composite font, none below is free.
    std::uint32_t nextCid = 1;
  };

  std::uint32_t freeCode(Part& part, std::uint32_t wanted, bool hasText) const;
  std::size_t capacity() const { return form_ == Form::kSimple ? 256 : 65535; }
  void writePart(PdfFile& file, const Part& part);
  FontSubset subsetOf(const Part& part, const std::string& name) const;
  std::string taggedName(const Part& part) const;
  ObjectNumber writeDescriptor(PdfFile& file, const Part& part, const FontSubset& subset,
                               const std::string& name);
  void writeSimple(PdfFile& file, const Part& part, const FontSubset& subset, const std::string& name);
  void writeComposite(PdfFile& file, const Part& part, const FontSubset& subset, const std::string& name);
  ObjectNumber writeToUnicode(PdfFile& file, const Part& part) const;

  std::unique_ptr<OutlineFont> font_;
  std::string name_;
  double unit_;
  Form form_;
  std::unordered_map<GlyphIndex, Glyph> glyphs_;
  std::unordered_map<GlyphIndex, GlyphSlot> slots_;
  std::vector<Part> parts_;
  std::size_t brokenGlyphs_ = 0;
};

}  // namespace quillpress::level3
