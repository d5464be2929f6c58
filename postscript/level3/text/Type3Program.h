#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "postscript/level3/pdf/ContentResources.h"
#include "postscript/level3/pdf/PdfDocument.h"
#include "postscript/level3/text/OutlineProgram.h"

namespace quillpress::level3 {

// Glyphs that are drawn by content of their own, in fonts of 256 codes each. Glyphs of equal content are one,
// whatever fonts of the job they come from. One whose text nothing tells keeps the job's code, since readers
// take that for the text; where another glyph has it already, there is another font.
class Type3Program {
 public:
  static constexpr std::uint32_t kCodes = 256;

  // What a font of the job says of a glyph.
  struct Description {
    ObjectNumber procedure = 0;
    double advance = 0;  // character space
    Box bounds;
    std::string name;
    std::u32string text;
    std::uint32_t code = 0;  // the one to take when it is free
    // Drawn once for all; what looks different each time cannot have a code for itself each time.
    bool isMask = false;

    bool keepsCode() const { return isMask && text.empty() && code < kCodes; }
  };

  // Character space to text space; must keep the axes apart.
  Type3Program(std::string name, const Matrix& matrix) : name_(std::move(name)), matrix_(matrix) {}

  const std::string& name() const { return name_; }
  const Matrix& matrix() const { return matrix_; }

  // `home` is the PDF's font for codes of the same font of the job; 0 until one is chosen.
  GlyphSlot use(PdfFile& file, const Description& glyph, const ContentResources& resources,
                ObjectNumber& home);
  void write(PdfFile& file);

 private:
  struct Part {
    ObjectNumber number = 0;
    std::size_t count = 0;
    std::vector<Description> codes;  // those without a procedure are free
    bool isFree(std::uint32_t code) const { return code >= codes.size() || codes[code].procedure == 0; }
    std::map<std::string, ObjectNumber, std::less<>> procedures;
    ContentResources resources;
  };

  Part& partFor(PdfFile& file, const Description& glyph, ObjectNumber home);
  void writePart(PdfFile& file, const Part& part) const;

  std::string name_;
  Matrix matrix_;
  std::vector<Part> parts_;
  // By procedure, advance and text, and the code where that has to stand for the text.
  std::map<std::tuple<ObjectNumber, double, std::u32string, std::uint32_t>, GlyphSlot> slots_;
};

}  // namespace quillpress::level3
