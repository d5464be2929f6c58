#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/ImageData.h"
#include "postscript/level3/graphics/ImagePainting.h"
#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

std::int64_t integerOf(const Object& object) {
  if (!object.isInteger()) raise(ErrorName::kTypeCheck);
  return object.asInteger();
}

// In a pattern that has no colours of its own, nothing may bring any.
void requireColours(const Graphics& graphics) {
  if (graphics.state().device->isUncoloured) raise(ErrorName::kUndefined);
}

// width height bits matrix below `top` further operands
ImageParameters readShape(Interpreter& interpreter, std::size_t top, int components) {
  const ObjectStack& operands = interpreter.operands();
  requireOperands(interpreter, top + 4);
  ImageParameters parameters;
  parameters.toImage = matrixOf(operands.top(top));
  inverseOf(parameters.toImage);
  parameters.layout = imageLayout(integerOf(operands.top(top + 3)), integerOf(operands.top(top + 2)),
                                  components, integerOf(operands.top(top + 1)));
  return parameters;
}

// `count` data sources below `top` further operands.
void takeSources(ObjectStack& operands, std::size_t top, std::size_t count, ImageParameters& parameters) {
  const std::span<const Object> sources = operands.last(top + count).first(count);
  requireImageSources(sources);
  parameters.sources.assign(sources.begin(), sources.end());
}

void imageOfDictionary(Interpreter& interpreter);

// width height bits/sample matrix datasrc ->    or  dict ->
void image(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  requireOperands(interpreter, 1);
  requireColours(graphics);
  if (interpreter.operands().top().isDictionary()) return imageOfDictionary(interpreter);
  requireOperands(interpreter, 5);
  ImageParameters parameters = readShape(interpreter, 1, 1);
  takeSources(interpreter.operands(), 0, 1, parameters);
  const OperandsAside aside(interpreter, 5);
  paintImage(graphics, parameters, graphics.deviceSpace(ColourSpace::Kind::kDeviceGray));
}

int componentsOf(const ColourSpace& space) {
  return static_cast<int>(space.componentCount());
}

// Image and mask in one.
void maskedImage(Interpreter& interpreter, const ColourSpacePointer& space) {
  const Object dictionary = interpreter.operands().top();
  const DictionaryReader entries(interpreter, dictionary);
  const std::int64_t interleave = entries.integer("InterleaveType");
  if (interleave < 1 || interleave > 3) raise(ErrorName::kRangeCheck);
  const ImageParameters image =
      readImageDictionary(interpreter, entries.require("DataDict"), componentsOf(*space));
  const Object& maskDictionary = entries.require("MaskDict");
  const ImageParameters mask = interleave == 3 ? readImageDictionary(interpreter, maskDictionary, 1)
                                               : readSourcelessDictionary(interpreter, maskDictionary, 1);
  const bool hasSameShape = mask.layout.width == image.layout.width &&
                            mask.layout.height == image.layout.height &&
                            mask.layout.bits == image.layout.bits;
  const bool divides = image.layout.height == 0 || mask.layout.height == 0 ||
                       image.layout.height % mask.layout.height == 0 ||
                       mask.layout.height % image.layout.height == 0;
  if (interleave == 1 && !hasSameShape) raise(ErrorName::kRangeCheck);
  if (interleave == 2 && !divides) raise(ErrorName::kRangeCheck);
  if (interleave != 1 && mask.layout.bits != 1) raise(ErrorName::kRangeCheck);
  if (interleave != 3 && image.sources.size() != 1) raise(ErrorName::kRangeCheck);
  const OperandsAside aside(interpreter, 1);
  paintMaskedImage(graphicsOf(interpreter), image, mask, static_cast<int>(interleave), space);
}

void imageOfDictionary(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  const Object dictionary = interpreter.operands().top();
  const DictionaryReader entries(interpreter, dictionary);
  const ColourSpacePointer space = graphics.state().colour->space();
  if (space->kind() == ColourSpace::Kind::kPattern) raise(ErrorName::kRangeCheck);
  if (entries.integer("ImageType") == 3) return maskedImage(interpreter, space);
  const ImageParameters parameters = readImageDictionary(interpreter, dictionary, componentsOf(*space));
  const OperandsAside aside(interpreter, 1);
  paintImage(graphics, parameters, space);
}

// width height polarity matrix datasrc ->    or  dict ->
void imageMask(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  requireOperands(interpreter, 1);
  ImageParameters parameters;
  const bool isDictionary = operands.top().isDictionary();
  if (isDictionary) {
    parameters = readImageDictionary(interpreter, operands.top(), 1);
    if (parameters.layout.bits != 1) raise(ErrorName::kRangeCheck);
  } else {
    requireOperands(interpreter, 5);
    const Object& polarity = operands.top(2);
    if (!polarity.is(Type::kBoolean)) raise(ErrorName::kTypeCheck);
    parameters.toImage = matrixOf(operands.top(1));
    inverseOf(parameters.toImage);
    parameters.layout = imageLayout(integerOf(operands.top(4)), integerOf(operands.top(3)), 1, 1);
    parameters.decode = polarity.asBoolean() ? std::vector<double>{1, 0} : std::vector<double>{0, 1};
    takeSources(operands, 0, 1, parameters);
  }
  const OperandsAside aside(interpreter, isDictionary ? 1 : 5);
  paintStencil(graphicsOf(interpreter), parameters);
}

ColourSpace::Kind deviceKind(std::int64_t components) {
  switch (components) {
    case 1:
      return ColourSpace::Kind::kDeviceGray;
    case 3:
      return ColourSpace::Kind::kDeviceRgb;
    case 4:
      return ColourSpace::Kind::kDeviceCmyk;
    default:
      raise(ErrorName::kRangeCheck);
  }
}

// width height bits/comp matrix datasrc0 ... datasrcn-1 multi ncomp ->
void colorImage(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  Graphics& graphics = graphicsOf(interpreter);
  requireOperands(interpreter, 2);
  requireColours(graphics);
  const std::int64_t components = integerOf(operands.top());
  const ColourSpace::Kind kind = deviceKind(components);
  if (!operands.top(1).is(Type::kBoolean)) raise(ErrorName::kTypeCheck);
  const std::size_t sources = operands.top(1).asBoolean() ? static_cast<std::size_t>(components) : 1;
  requireOperands(interpreter, sources + 6);
  ImageParameters parameters = readShape(interpreter, sources + 2, static_cast<int>(components));
  takeSources(operands, 2, sources, parameters);
  const OperandsAside aside(interpreter, sources + 6);
  paintImage(graphics, parameters, graphics.deviceSpace(kind));
}

constexpr OperatorRow kImageOperators[] = {
    {"image", "", image},
    {"imagemask", "", imageMask},
    {"colorimage", "", colorImage},
};

}  // namespace

void addImageOperators(Interpreter& interpreter) {
  interpreter.addOperators(kImageOperators);
}

}  // namespace quillpress::level3
