#include "postscript/level3/colour/ColourSpace.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace quillpress::level3 {

namespace {

class DeviceSpace final : public ColourSpace {
 public:
  DeviceSpace(Kind kind, const Object& array) : ColourSpace(kind, countOf(kind), array) {}

  Components initialColour() const override {
    Components colour{};
    if (kind() == Kind::kDeviceCmyk) colour[3] = 1;
    return colour;
  }

  std::string pdfText(PdfFile&) const override {
    if (kind() == Kind::kDeviceGray) return "/DeviceGray";
    return kind() == Kind::kDeviceRgb ? "/DeviceRGB" : "/DeviceCMYK";
  }

  Paint paint(std::span<const float> components, PdfFile&) const override {
    Paint paint;
    paint.kind = kind() == Kind::kDeviceGray  ? Paint::Space::kGray
                 : kind() == Kind::kDeviceRgb ? Paint::Space::kRgb
                                              : Paint::Space::kCmyk;
    paint.count = static_cast<std::uint8_t>(componentCount());
    std::copy_n(components.begin(), componentCount(), paint.components.begin());
    return paint;
  }

 private:
  static std::size_t countOf(Kind kind) {
    if (kind == Kind::kDeviceGray) return 1;
    return kind == Kind::kDeviceRgb ? 3 : 4;
  }
};

}  // namespace

std::pair<double, double> ColourSpace::range(std::size_t) const {
  return {0, 1};
}

void ColourSpace::clamp(std::span<float> components) const {
  for (std::size_t index = 0; index < components.size(); ++index) {
    const auto [least, greatest] = range(index);
    // Written so that what is no number becomes the least value.
    float& value = components[index];
    if (!(value >= static_cast<float>(least))) value = static_cast<float>(least);
    if (value > static_cast<float>(greatest)) value = static_cast<float>(greatest);
  }
}

ObjectNumber NamedColourSpace::object(PdfFile& file) const {
  if (object_ == 0) object_ = file.addShared(definition(file));
  return object_;
}

std::string NamedColourSpace::pdfText(PdfFile& file) const {
  std::string text;
  appendReference(text, object(file));
  return text;
}

Paint NamedColourSpace::paint(std::span<const float> components, PdfFile& file) const {
  Paint paint;
  paint.kind = Paint::Space::kNamed;
  paint.space = object(file);
  paint.count = static_cast<std::uint8_t>(componentCount());
  for (std::size_t index = 0; index < componentCount(); ++index) {
    paint.components[index] = static_cast<float>(pdfComponent(index, static_cast<double>(components[index])));
  }
  return paint;
}

ColourSpacePointer deviceSpace(ColourSpace::Kind kind, const Object& array) {
  return std::make_shared<DeviceSpace>(kind, array);
}

}  // namespace quillpress::level3
