#pragma once

#include <string>
#include <vector>

#include "postscript/level3/colour/ColourSpace.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// Colours counted in a table of another space.
class IndexedSpace final : public NamedColourSpace {
 public:
  // `table` holds a byte for each component of the base space, for each of the highest + 1 colours.
  IndexedSpace(const Object& array, ColourSpacePointer base, int highest, std::string table)
      : NamedColourSpace(Kind::kIndexed, 1, array),
        base_(std::move(base)),
        table_(std::move(table)),
        highest_(highest) {}

  ColourSpacePointer base() const override { return base_; }
  int highest() const { return highest_; }
  const std::string& table() const { return table_; }
  std::pair<double, double> range(std::size_t) const override { return {0, highest_}; }
  void clamp(std::span<float> components) const override;
  void trace(Tracer& tracer) const override;

 protected:
  std::string definition(PdfFile& file) const override;

 private:
  ColourSpacePointer base_;
  std::string table_;
  int highest_;
};

// Separation and DeviceN: inks by name, with a function to another space for devices that do not have them.
class InkSpace final : public NamedColourSpace {
 public:
  InkSpace(Kind kind, const Object& array, std::vector<std::string> names, ColourSpacePointer alternative,
           std::string tintTransform)
      : NamedColourSpace(kind, names.size(), array),
        names_(std::move(names)),
        alternative_(std::move(alternative)),
        tintTransform_(std::move(tintTransform)) {}

  Components initialColour() const override;
  void trace(Tracer& tracer) const override;

 protected:
  std::string definition(PdfFile& file) const override;

 private:
  std::vector<std::string> names_;
  ColourSpacePointer alternative_;
  // Entries and data of a function stream, from tintFunction().
  std::string tintTransform_;
};

// A function in PDF's terms: a stream's entries, then a line end, then its data.
std::string tintFunction(Interpreter& interpreter, const Object& procedure, std::size_t inputs,
                         const ColourSpace& alternative);

// The object for such a function.
ObjectNumber writeFunction(const std::string& function, PdfFile& file);

class PatternSpace final : public ColourSpace {
 public:
  PatternSpace(const Object& array, ColourSpacePointer base)
      : ColourSpace(Kind::kPattern, base ? base->componentCount() : 0, array), base_(std::move(base)) {}

  ColourSpacePointer base() const override { return base_; }
  std::string pdfText(PdfFile& file) const override;
  Paint paint(std::span<const float>, PdfFile&) const override { return {}; }
  void clamp(std::span<float> components) const override;
  void trace(Tracer& tracer) const override;

  // The object [/Pattern base]. REQUIRES: base()
  ObjectNumber object(PdfFile& file) const;

 private:
  ColourSpacePointer base_;
};

}  // namespace quillpress::level3
