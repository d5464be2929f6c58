#include "postscript/level3/graphics/Patterns.h"

#include "postscript/level3/colour/SpecialSpaces.h"
#include "postscript/level3/graphics/Capture.h"
#include "postscript/level3/graphics/DictionaryReader.h"
#include "postscript/level3/graphics/Shading.h"

namespace quillpress::level3 {

namespace {

constexpr std::string_view kNumberKey = "Implementation";

// Renderers round a cell up to whole pixels. One that measures a whole number in device space is made a hair
// smaller, so that noise in the last digit does not give it a pixel more, which would shift all cells behind
// it.
Matrix trimmedCell(const Matrix& toDevice, double xStep, double yStep) {
  constexpr double kHair = 1.0 / 256;
  if (!toDevice.keepsAxes()) return toDevice;
  const double width = length(toDevice.applyToDistance({xStep, 0}));
  const double height = length(toDevice.applyToDistance({0, yStep}));
  if (!(width > 1) || !(height > 1)) return toDevice;
  return Matrix::scaling(1 - kHair / width, 1 - kHair / height) * toDevice;
}

}  // namespace

Object Patterns::make(const Object& prototype, const Matrix& matrix) {
  Interpreter& interpreter = graphics_.interpreter();
  VirtualMemory& memory = interpreter.memory();
  const DictionaryReader entries(interpreter, prototype);
  Made made;
  made.type = static_cast<int>(entries.integer("PatternType"));
  if (made.type == 1) {
    const std::int64_t paintType = entries.integer("PaintType");
    const std::int64_t tilingType = entries.integer("TilingType");
    if (paintType < 1 || paintType > 2 || tilingType < 1 || tilingType > 3) raise(ErrorName::kRangeCheck);
    made.isUncoloured = paintType == 2;
    entries.box("BBox");
    if (entries.number("XStep") == 0 || entries.number("YStep") == 0) raise(ErrorName::kRangeCheck);
    entries.procedure("PaintProc");
  } else if (made.type == 2) {
    if (!entries.require("Shading").isDictionary()) raise(ErrorName::kTypeCheck);
  } else {
    raise(ErrorName::kRangeCheck);
  }
  made.toDevice = matrix * graphics_.state().ctm;
  auto state = std::make_shared<GraphicsState>(graphics_.state());
  state->path.clear();
  state->clipStack.clear();
  made.state = std::move(state);

  const Dictionary& source = *prototype.asDictionary();
  const Object copy = memory.newDictionary(source.length() + 1);
  for (const Dictionary::Entry& entry : source.entries()) {
    if (!entry.key.isNull()) memory.put(*copy.asDictionary(), entry.key, entry.value);
  }
  // A number that no later save or restore can make stand for another pattern.
  made_.emplace(++lastNumber_, std::move(made));
  made_[lastNumber_].serial = copy.storage()->isGlobal() ? 0 : copy.storage()->madeIn();
  memory.put(*copy.asDictionary(), memory.name(kNumberKey), Object::integer(lastNumber_));
  memory.setAccess(*copy.asDictionary(), Access::kReadOnly);
  return copy;
}

Patterns::Made& Patterns::find(const Object& pattern) {
  if (!pattern.isDictionary()) raise(ErrorName::kTypeCheck);
  const Object* number = pattern.asDictionary()->find(graphics_.interpreter().memory().name(kNumberKey));
  if (number == nullptr || !number->isInteger()) raise(ErrorName::kTypeCheck);
  const auto found = made_.find(number->asInteger());
  if (found == made_.end()) raise(ErrorName::kTypeCheck);
  return found->second;
}

bool Patterns::isUncoloured(const Object& pattern) {
  return find(pattern).isUncoloured;
}

std::optional<Paint> Patterns::visiblePaint(const Colour& colour) {
  if (!colour.isPattern()) return colour.paint(graphics_.document().file());
  if (colour.pattern().isNull()) return std::nullopt;
  return paint(colour);
}

Paint Patterns::paint(const Colour& colour) {
  // Kept here, since the pattern's procedure may set other colours.
  const ColourSpacePointer space = colour.space();
  const ColourSpace::Components components = colour.components();
  Made& made = find(colour.pattern());
  const Matrix initialSpace = graphics_.state().device->canvas->content()->initialSpace();
  const ObjectNumber object = write(made, colour.pattern(), initialSpace);

  Paint paint;
  PdfFile& file = graphics_.document().file();
  if (made.isUncoloured) {
    paint = space->base()->paint({components.data(), space->componentCount()}, file);
    paint.space = static_cast<const PatternSpace&>(*space).object(file);
  } else {
    paint.count = 0;
  }
  paint.kind = Paint::Space::kPattern;
  paint.pattern = object;
  return paint;
}

ObjectNumber Patterns::write(Made& made, const Object& pattern, const Matrix& initialSpace) {
  if (made.object != 0 && made.space == initialSpace) return made.object;
  const Made copy = made;
  const ObjectNumber object =
      copy.type == 1 ? writeTiling(copy, pattern, initialSpace) : writeShading(copy, pattern, initialSpace);
  // Its procedure may have made or forgotten others.
  Made& again = find(pattern);
  again.object = object;
  again.space = initialSpace;
  return object;
}

ObjectNumber Patterns::writeTiling(const Made& made, const Object& pattern, const Matrix& initialSpace) {
  Interpreter& interpreter = graphics_.interpreter();
  const DictionaryReader entries(interpreter, pattern);
  const Box box = entries.box("BBox");
  Captured captured;
  if (made.toDevice.inverse()) {
    const Object procedure = entries.procedure("PaintProc");
    const Rooted kept(interpreter.memory(), pattern);
    const GraphicsScope scope(graphics_);
    const DevicePointer device = graphics_.state().device;
    graphics_.setState(*made.state);
    graphics_.state().device = device;
    // The colour of such a cell comes when it is painted with; no pattern of its making stands in the way.
    if (made.isUncoloured) {
      graphics_.state().colour =
          std::make_shared<Colour>(graphics_.deviceSpace(ColourSpace::Kind::kDeviceGray));
    }
    captured = capture(graphics_, {made.toDevice, box, true, made.isUncoloured}, [&] {
      interpreter.operands().push(pattern);
      interpreter.runAndWait(procedure);
    });
  }
  DictionaryText text;
  text.name("Type", "Pattern").integer("PatternType", 1).integer("PaintType", made.isUncoloured ? 2 : 1);
  text.integer("TilingType", entries.integer("TilingType")).box("BBox", box);
  text.number("XStep", entries.number("XStep")).number("YStep", entries.number("YStep"));
  const double xStep = entries.number("XStep");
  const double yStep = entries.number("YStep");
  // Cells of the second tiling type are never distorted, and where cells leave gaps nothing would show.
  const bool isTight = xStep == box.width() && yStep == box.height();
  const bool isTrimmed = isTight && entries.integer("TilingType") != 2;
  text.matrix("Matrix",
              (isTrimmed ? trimmedCell(made.toDevice, xStep, yStep) : made.toDevice) * initialSpace);
  text.entry("Resources", captured.resources.empty() ? "<<>>" : captured.resources);
  return graphics_.document().file().addSharedStream(text.entries(), captured.content, StreamData::kDeflate);
}

ObjectNumber Patterns::writeShading(const Made& made, const Object& pattern, const Matrix& initialSpace) {
  const DictionaryReader entries(graphics_.interpreter(), pattern);
  PdfFile& file = graphics_.document().file();
  const ShadingObject shading =
      level3::writeShading(graphics_.interpreter(), entries.require("Shading"), file);
  DictionaryText text;
  text.name("Type", "Pattern").integer("PatternType", 2).reference("Shading", shading.number);
  text.matrix("Matrix", made.toDevice * initialSpace);
  return file.addShared(text.text());
}

void Patterns::forgetSince(std::uint32_t serial) {
  std::erase_if(made_, [serial](const auto& entry) { return entry.second.serial >= serial; });
}

void Patterns::trace(Tracer& tracer) const {
  for (const auto& [number, made] : made_) made.state->trace(tracer);
}

}  // namespace quillpress::level3
