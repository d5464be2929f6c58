#include "postscript/lib/pdf/ColourOperators.h"

#include <span>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/pdf/HsbColour.h"

namespace quillpress {

namespace {

using Components = std::array<double, 4>;

// Writes a colour for strokes and for fills: PDF has two current colours, PostScript one.
void writeColour(PageContent& content, std::span<const double> components, std::string_view strokeOperator,
                 std::string_view fillOperator) {
  content.appendNumbers(components, strokeOperator);
  content.appendNumbers(components, fillOperator);
}

void setColour(Postscript2Pdf& converter, ColourSpace space, const Components& colour) {
  converter.state().colourSpace = space;
  converter.state().colour = colour;
  PageContent& content = converter.content();
  const std::span<const double> components(colour);
  switch (space) {
    case ColourSpace::kGray:
      writeColour(content, components.first(1), " G ", " g ");
      break;
    case ColourSpace::kRgb:
      writeColour(content, components.first(3), " RG ", " rg ");
      break;
    case ColourSpace::kCmyk:
      writeColour(content, components, " K ", " k ");
      break;
    // Written as RGB, which is all that PDF knows; the state keeps hue and saturation, since black
    // has lost them.
    case ColourSpace::kHsb: {
      const Rgb rgb = rgbOfHsb(colour[0], colour[1], colour[2]);
      writeColour(content, std::array{rgb.red, rgb.green, rgb.blue}, " RG ", " rg ");
      break;
    }
    case ColourSpace::kUnknown:
      break;
  }
}

// The last component is on top.
Components popComponents(Interpreter& interpreter, std::size_t count) {
  Components components{};
  for (std::size_t i = count; i > 0; --i) components[i - 1] = popNumber(interpreter);
  return components;
}

// Kept: no conversion between models, except to gray (colour/currentrgbcolor.ps).
void pushColourOf(Interpreter& interpreter, const GraphicsState& state, ColourSpace space) {
  if (state.colourSpace != space) THROW_EX("Current color conversions not supported");
  for (const double component :
       std::span(state.colour).first(static_cast<std::size_t>(componentCount(space)))) {
    interpreter.pushReal(component);
  }
}

// The weights of television, which the language uses as well.
double grayOfRgb(double red, double green, double blue) {
  return 0.587 * green + 0.299 * red + 0.114 * blue;
}

double grayOf(ColourSpace space, const Components& colour) {
  switch (space) {
    case ColourSpace::kGray:
      return colour[0];
    case ColourSpace::kRgb:
      return grayOfRgb(colour[0], colour[1], colour[2]);
    case ColourSpace::kHsb: {
      const Rgb rgb = rgbOfHsb(colour[0], colour[1], colour[2]);
      return grayOfRgb(rgb.red, rgb.green, rgb.blue);
    }
    // Black covers what the three inks have left of the paper.
    case ColourSpace::kCmyk:
      return (1 - 0.299 * colour[0] - 0.587 * colour[1] - 0.114 * colour[2]) * (1 - colour[3]);
    case ColourSpace::kUnknown:
      break;
  }
  THROW_EX("color conversion not supported");
}

// The name of a colour space that stands bare or first in an array; empty for anything else. Jobs write both
// /DeviceRGB and [/DeviceRGB]; what else such an array may hold belongs to spaces that are left alone.
std::string_view colourSpaceName(const PostscriptObject& operand) {
  const PostscriptObject* first = &operand;
  if (const auto* array = as<ArrayObject>(&operand)) first = array->element(0);
  const auto* name = as<NameObject>(first);
  return name != nullptr ? std::string_view(name->text) : std::string_view();
}

}  // namespace

void SetrgbcolorOperator::execute(Interpreter& interpreter) {
  setColour(converter, ColourSpace::kRgb, popComponents(interpreter, 3));
}

void SethsbcolorOperator::execute(Interpreter& interpreter) {
  setColour(converter, ColourSpace::kHsb, popComponents(interpreter, 3));
}

void SetcmykcolorOperator::execute(Interpreter& interpreter) {
  setColour(converter, ColourSpace::kCmyk, popComponents(interpreter, 4));
}

void SetgrayOperator::execute(Interpreter& interpreter) {
  setColour(converter, ColourSpace::kGray, popComponents(interpreter, 1));
}

void CurrentrgbcolorOperator::execute(Interpreter& interpreter) {
  pushColourOf(interpreter, converter.state(), ColourSpace::kRgb);
}

void CurrenthsbcolorOperator::execute(Interpreter& interpreter) {
  pushColourOf(interpreter, converter.state(), ColourSpace::kHsb);
}

void CurrentcmykcolorOperator::execute(Interpreter& interpreter) {
  pushColourOf(interpreter, converter.state(), ColourSpace::kCmyk);
}

void CurrentgrayOperator::execute(Interpreter& interpreter) {
  interpreter.pushReal(grayOf(converter.state().colourSpace, converter.state().colour));
}

void SetcolorspaceOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
  // A space that PDF content cannot name without a resource leaves the colour as it is: its images say
  // theirs.
  const std::string_view name = colourSpaceName(*operand);
  if (name == "DeviceGray") {
    setColour(converter, ColourSpace::kGray, {});
  } else if (name == "DeviceRGB") {
    setColour(converter, ColourSpace::kRgb, {});
  } else if (name == "DeviceCMYK") {
    setColour(converter, ColourSpace::kCmyk, {0, 0, 0, 1});
  } else if (name == "Pattern") {
    converter.content().append("/Pattern cs\n");
  }
}

}  // namespace quillpress
