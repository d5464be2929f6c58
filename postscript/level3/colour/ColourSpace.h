#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "postscript/level3/objects/Object.h"
#include "postscript/level3/objects/Tracer.h"
#include "postscript/level3/pdf/Paint.h"
#include "postscript/level3/pdf/PdfFile.h"

namespace quillpress::level3 {

class ColourSpace;
using ColourSpacePointer = std::shared_ptr<const ColourSpace>;

// A colour space of the language, and what stands for it in the PDF file. Spaces do not change and are shared
// by graphics states.
class ColourSpace {
 public:
  enum class Kind : std::uint8_t {
    kDeviceGray,
    kDeviceRgb,
    kDeviceCmyk,
    kCieBasedA,
    kCieBasedAbc,
    kCieBasedDef,
    kCieBasedDefg,
    kIndexed,
    kSeparation,
    kDeviceN,
    kPattern,
  };
  using Components = std::array<float, Paint::kMostComponents>;

  virtual ~ColourSpace() = default;
  ColourSpace(const ColourSpace&) = delete;
  ColourSpace& operator=(const ColourSpace&) = delete;

  Kind kind() const { return kind_; }
  // Numbers that make a colour; of a pattern space those of its underlying space.
  std::size_t componentCount() const { return count_; }

  // The space as currentcolorspace gives it back.
  const Object& array() const { return array_; }

  // What Indexed and Pattern spaces are built on; null for others, and for patterns with colours of their
  // own.
  virtual ColourSpacePointer base() const { return nullptr; }

  virtual Components initialColour() const { return {}; }
  // The nearest values that the space allows.
  virtual void clamp(std::span<float> components) const;

  // What stands for the space in PDF: a name, or a reference to an object that is written when it is asked
  // for.
  virtual std::string pdfText(PdfFile& file) const = 0;
  // A colour as page content wants it. REQUIRES: not a pattern space
  virtual Paint paint(std::span<const float> components, PdfFile& file) const = 0;
  // A value of one component as PDF's space counts it; spaces that become profiles count from 0 to 1.
  virtual double pdfComponent(std::size_t /*index*/, double value) const { return value; }
  // The values that an image's least and greatest sample stand for unless it says otherwise.
  virtual std::pair<double, double> range(std::size_t index) const;

  virtual void trace(Tracer& tracer) const { tracer.visit(array_); }

 protected:
  ColourSpace(Kind kind, std::size_t count, const Object& array)
      : array_(array), count_(count), kind_(kind) {}

 private:
  Object array_;
  std::size_t count_;
  Kind kind_;
};

// A space that is an object of the file.
class NamedColourSpace : public ColourSpace {
 public:
  std::string pdfText(PdfFile& file) const override;
  Paint paint(std::span<const float> components, PdfFile& file) const override;

 protected:
  using ColourSpace::ColourSpace;

  // The object's text.
  virtual std::string definition(PdfFile& file) const = 0;
  ObjectNumber object(PdfFile& file) const;

 private:
  mutable ObjectNumber object_ = 0;
};

// The three device spaces; `array` is what currentcolorspace shows.
ColourSpacePointer deviceSpace(ColourSpace::Kind kind, const Object& array);

}  // namespace quillpress::level3
