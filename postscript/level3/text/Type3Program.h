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
// whatever fonts of the job they come from.
class Type3Program {
 public:
  // What a font of the job says of a glyph.
  struct Description {
    ObjectNumber procedure = 0;
    double advance = 0;  // character space
    Box bounds;
    std::string name;
    std::u32string text;
    std::uint32_t code = 0;  // the one to take when it is free
  };

  // Character space to text space; must keep the axes apart.
  Type3Program(std::string name, const Matrix& matrix) : name_(std::move(name)), matrix_(matrix) {}

  const std::string& name() const { return name_; }
  const Matrix& matrix() const { return matrix_; }

  GlyphSlot use(PdfFile& file, const Description& glyph, const ContentResources& resources);
  void write(PdfFile& file);

 private:
  struct Part {
    ObjectNumber number = 0;
    std::size_t count = 0;
    std::vector<Description> codes;  // those without a procedure are free
    std::map<std::string, ObjectNumber, std::less<>> procedures;
    ContentResources resources;
  };

  void writePart(PdfFile& file, const Part& part) const;

  std::string name_;
  Matrix matrix_;
  std::vector<Part> parts_;
  std::map<std::tuple<ObjectNumber, double, std::u32string>, GlyphSlot> slots_;
};

}  // namespace quillpress::level3
