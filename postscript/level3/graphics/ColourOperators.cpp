#include <algorithm>
#include <array>
#include <cmath>

#include "postscript/level3/colour/ColourConversion.h"
#include "postscript/level3/colour/ColourSpaceReader.h"
#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

using Kind = ColourSpace::Kind;

// In a pattern without colours of its own, colours are undefined.
void requireColours(Interpreter& interpreter) {
  if (stateOf(interpreter).device->isUncoloured) raise(ErrorName::kUndefined);
}

// The space's array is made once, so that setting a colour allocates nothing in the job's memory.
const ColourSpacePointer& cachedDeviceSpace(Interpreter& interpreter, Kind kind) {
  return graphicsOf(interpreter).deviceSpace(kind);
}

template <std::size_t kCount>
void setDeviceColour(Interpreter& interpreter, Kind kind, const std::array<double, kCount>& values) {
  ColourSpace::Components components{};
  std::transform(values.begin(), values.end(), components.begin(),
                 [](double value) { return static_cast<float>(value); });
  stateOf(interpreter).colour = std::make_shared<Colour>(cachedDeviceSpace(interpreter, kind), components);
  interpreter.operands().pop(kCount);
}

template <std::size_t kCount>
std::array<double, kCount> numbers(Interpreter& interpreter) {
  std::array<double, kCount> values;
  for (std::size_t index = 0; index < kCount; ++index) {
    values[index] = interpreter.operands().top(kCount - 1 - index).asNumber();
  }
  return values;
}

// gray ->
void setGray(Interpreter& interpreter) {
  requireColours(interpreter);
  setDeviceColour(interpreter, Kind::kDeviceGray, numbers<1>(interpreter));
}
// red green blue ->
void setRgbColor(Interpreter& interpreter) {
  requireColours(interpreter);
  setDeviceColour(interpreter, Kind::kDeviceRgb, numbers<3>(interpreter));
}
// hue saturation brightness ->
void setHsbColor(Interpreter& interpreter) {
  requireColours(interpreter);
  const auto hsb = numbers<3>(interpreter);
  setDeviceColour(interpreter, Kind::kDeviceRgb, rgbOfHsb(hsb));
}
// cyan magenta yellow black ->
void setCmykColor(Interpreter& interpreter) {
  requireColours(interpreter);
  setDeviceColour(interpreter, Kind::kDeviceCmyk, numbers<4>(interpreter));
}

template <std::size_t kCount>
void push(Interpreter& interpreter, const std::array<double, kCount>& values) {
  interpreter.operands().require(kCount);
  for (const double value : values) interpreter.operands().push(realOf(value));
}

void currentGray(Interpreter& interpreter) {
  push<1>(interpreter, {grayOf(*stateOf(interpreter).colour)});
}
void currentRgbColor(Interpreter& interpreter) {
  push(interpreter, rgbOf(*stateOf(interpreter).colour));
}
void currentHsbColor(Interpreter& interpreter) {
  push(interpreter, hsbOfRgb(rgbOf(*stateOf(interpreter).colour)));
}
void currentCmykColor(Interpreter& interpreter) {
  push(interpreter, cmykOf(*stateOf(interpreter).colour));
}

// array|name ->
void setColorSpace(Interpreter& interpreter) {
  requireColours(interpreter);
  const ColourSpacePointer space = graphicsOf(interpreter).colourSpace(interpreter.operands().top());
  stateOf(interpreter).colour = std::make_shared<Colour>(space);
  interpreter.operands().pop();
}
// -> array
void currentColorSpace(Interpreter& interpreter) {
  interpreter.operands().push(stateOf(interpreter).colour->space()->array());
}

ColourSpace::Components componentOperands(Interpreter& interpreter, std::size_t count, std::size_t above) {
  requireOperands(interpreter, count + above);
  ColourSpace::Components components{};
  for (std::size_t index = 0; index < count; ++index) {
    components[index] = static_cast<float>(numberOf(interpreter.operands().top(above + count - 1 - index)));
  }
  return components;
}

// [comp1 ... compn] pattern ->
void setPatternColour(Interpreter& interpreter, const ColourSpacePointer& space) {
  const Object pattern = interpreter.operands().top();
  if (pattern.isNull()) {
    stateOf(interpreter).colour = std::make_shared<Colour>(space);
    interpreter.operands().pop();
    return;
  }
  const bool isUncoloured = graphicsOf(interpreter).patterns().isUncoloured(pattern);
  if (isUncoloured && space->base() == nullptr) raise(ErrorName::kRangeCheck);
  const std::size_t count = isUncoloured ? space->componentCount() : 0;
  const auto components = componentOperands(interpreter, count, 1);
  stateOf(interpreter).colour = std::make_shared<Colour>(space, components, pattern);
  interpreter.operands().pop(count + 1);
}

// comp1 ... compn ->
void setColor(Interpreter& interpreter) {
  requireColours(interpreter);
  const ColourSpacePointer space = stateOf(interpreter).colour->space();
  requireOperands(interpreter, 1);
  if (space->kind() == Kind::kPattern) {
    setPatternColour(interpreter, space);
    return;
  }
  const auto components = componentOperands(interpreter, space->componentCount(), 0);
  stateOf(interpreter).colour = std::make_shared<Colour>(space, components);
  interpreter.operands().pop(space->componentCount());
}

// -> comp1 ... compn [pattern]
void currentColor(Interpreter& interpreter) {
  const ColourPointer colour = stateOf(interpreter).colour;
  ObjectStack& operands = interpreter.operands();
  operands.require(colour->values().size() + 1);
  const bool hasNumbers =
      !colour->isPattern() ||
      (!colour->pattern().isNull() && graphicsOf(interpreter).patterns().isUncoloured(colour->pattern()));
  if (hasNumbers) {
    for (const float value : colour->values()) {
      const bool isIndex = colour->space()->kind() == Kind::kIndexed;
      operands.push(isIndex ? Object::integer(static_cast<std::int64_t>(value)) : Object::real(value));
    }
  }
  if (colour->isPattern()) operands.push(colour->pattern());
}

// [comp1 ... compn] pattern ->     A pattern space on top of the current one, unless it is one already.
void setPattern(Interpreter& interpreter) {
  requireColours(interpreter);
  const ColourSpacePointer current = stateOf(interpreter).colour->space();
  if (current->kind() == Kind::kPattern) {
    setPatternColour(interpreter, current);
    return;
  }
  setPatternColour(interpreter, graphicsOf(interpreter).patternSpace(current));
}

constexpr OperatorRow kColourOperators[] = {
    {"setgray", "num", setGray},
    {"currentgray", "", currentGray},
    {"setrgbcolor", "num num num", setRgbColor},
    {"currentrgbcolor", "", currentRgbColor},
    {"sethsbcolor", "num num num", setHsbColor},
    {"currenthsbcolor", "", currentHsbColor},
    {"setcmykcolor", "num num num num", setCmykColor},
    {"currentcmykcolor", "", currentCmykColor},
    {"setcolorspace", "name|array", setColorSpace},
    {"currentcolorspace", "", currentColorSpace},
    {"setcolor", "", setColor},
    {"currentcolor", "", currentColor},
    {"setpattern", "dict", setPattern},
};

}  // namespace

void addColourOperators(Interpreter& interpreter) {
  interpreter.addOperators(kColourOperators);
}

}  // namespace quillpress::level3
