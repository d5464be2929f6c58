#include "postscript/level3/graphics/Graphics.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "postscript/level3/colour/ColourSpaceReader.h"
#include "postscript/level3/colour/SpecialSpaces.h"

namespace quillpress::level3 {

namespace {

// Spaces that a job uses in turn; one that makes a new array each time is read each time.
constexpr std::size_t kMostKnownSpaces = 16;

// With what painting a path takes for a while: an outline of it, say.
constexpr std::size_t kBytesPerSegment = 128;

constexpr std::array<std::string_view, 3> kDeviceNames{"DeviceGray", "DeviceRGB", "DeviceCMYK"};

// An array of one name, in memory that restore leaves alone.
Object permanentArray(Interpreter& interpreter, std::string_view text) {
  VirtualMemory& memory = interpreter.memory();
  const bool wasGlobal = memory.isGlobal();
  memory.setGlobal(true);
  const Object name = Object::literalName(memory.name(text));
  const Object array = memory.newArray(std::span(&name, 1));
  memory.setGlobal(wasGlobal);
  return array;
}

}  // namespace

Graphics::Graphics(Interpreter& interpreter, PdfDocument& document)
    : interpreter_(interpreter), document_(document), patterns_(*this), strips_(document.file()) {
  state_.rendering = std::make_shared<RenderingParameters>();
  for (std::size_t kind = 0; kind < kDeviceNames.size(); ++kind) {
    deviceSpaces_[kind] = level3::deviceSpace(static_cast<ColourSpace::Kind>(kind),
                                              permanentArray(interpreter, kDeviceNames[kind]));
  }
  state_.colour = std::make_shared<Colour>(deviceSpaces_[0]);
  auto nowhere = std::make_shared<Device>();
  nowhere->canvas = std::make_shared<Canvas>(static_cast<ContentWriter*>(nullptr));
  nowhere->isNull = true;
  state_.device = std::move(nowhere);
}

// The paths of all states together. Many short ones are bounded by the number of states.
void Graphics::requireRoomForPaths() const {
  std::size_t segments = state_.path.segmentCount();
  if (segments < kLongPath) return;
  for (const Saved& saved : stack_) segments += saved.state.path.segmentCount();
  if (segments > interpreter_.memory().limit() / kBytesPerSegment) raise(ErrorName::kLimitCheck);
}

void Graphics::gsave() {
  if (stack_.size() >= kMostStates) raise(ErrorName::kLimitCheck);
  requireRoomForPaths();
  stack_.push_back({state_, 0});
}

void Graphics::grestore() {
  if (stack_.empty()) return;
  if (stack_.back().serial != 0) {
    state_ = stack_.back().state;
    return;
  }
  state_ = std::move(stack_.back().state);
  stack_.pop_back();
}

void Graphics::grestoreAll() {
  while (!stack_.empty() && stack_.back().serial == 0) {
    state_ = std::move(stack_.back().state);
    stack_.pop_back();
  }
  if (!stack_.empty()) state_ = stack_.back().state;
}

void Graphics::unwindTo(std::size_t depth) {
  while (stack_.size() > depth) {
    state_ = std::move(stack_.back().state);
    stack_.pop_back();
  }
}

void Graphics::onSave(std::uint32_t serial) {
  stack_.push_back({state_, serial});
}

void Graphics::onRestore(std::uint32_t serial) {
  while (!stack_.empty()) {
    const bool isFound = stack_.back().serial == serial;
    state_ = std::move(stack_.back().state);
    stack_.pop_back();
    if (isFound) break;
  }
  patterns_.forgetSince(serial);
  std::erase_if(knownSpaces_, [serial](const KnownSpace& known) {
    return VirtualMemory::isNewerThan(known.description, serial);
  });
}

void Graphics::setDevice(DevicePointer device) {
  state_.device = std::move(device);
  initGraphics();
}

void Graphics::initGraphics() {
  initMatrix();
  state_.path.clear();
  state_.pathBounds.reset();
  initClip();
  state_.colour = std::make_shared<Colour>(deviceSpace(ColourSpace::Kind::kDeviceGray));
  state_.line = {};
}

void Graphics::initClip() {
  Path area;
  area.appendRectangle(state_.device->area);
  state_.clip = Clip::within(nullptr, area, FillRule::kNonzero);
}

const ColourSpacePointer& Graphics::deviceSpace(ColourSpace::Kind kind) {
  return deviceSpaces_[static_cast<std::size_t>(kind)];
}

ColourSpacePointer Graphics::patternSpace(const ColourSpacePointer& base) {
  VirtualMemory& memory = interpreter_.memory();
  std::vector<Object> elements{Object::literalName(memory.name("Pattern"))};
  if (base) elements.push_back(base->array());
  return std::make_shared<PatternSpace>(memory.newArray(elements), base);
}

ColourSpacePointer Graphics::colourSpace(const Object& description) {
  if (description.isName()) {
    const std::string_view name = description.asName()->text();
    for (std::size_t kind = 0; kind < kDeviceNames.size(); ++kind) {
      if (name == kDeviceNames[kind]) return deviceSpaces_[kind];
    }
  }
  for (const KnownSpace& known : knownSpaces_) {
    if (known.description.isIdenticalTo(description)) return known.space;
  }
  ColourSpacePointer space = readColourSpace(interpreter_, description);
  // Those that cost nothing to read are not worth a place.
  if (space->kind() >= ColourSpace::Kind::kCieBasedA && space->kind() != ColourSpace::Kind::kPattern) {
    if (knownSpaces_.size() == kMostKnownSpaces) knownSpaces_.erase(knownSpaces_.begin());
    knownSpaces_.push_back({description, space});
  }
  return space;
}

// Those that are beyond the numbers, in a long path, or within setbbox.
void Graphics::requireUncommon(Point point) const {
  if (!isCoordinate(point.x) || !isCoordinate(point.y)) raise(ErrorName::kUndefinedResult);
  if (state_.path.segmentCount() % kLongPath == kLongPath - 1) requireRoomForPaths();
  // A little room for what single precision does to corners of the box.
  if (state_.pathBounds && !state_.pathBounds->grownBy(0.01).contains(point)) raise(ErrorName::kRangeCheck);
}

void Graphics::lineTo(Point device) {
  requireInBounds(device);
  currentPoint();
  state_.path.lineTo(device);
}

void Graphics::curveTo(Point control1, Point control2, Point end) {
  requireInBounds(control1);
  requireInBounds(control2);
  requireInBounds(end);
  currentPoint();
  state_.path.curveTo(control1, control2, end);
}

void Graphics::clipTo(const Path& path, FillRule rule) {
  state_.clip = Clip::within(state_.clip, path, rule);
}

ContentWriter* Graphics::content() {
  ContentWriter* const content = state_.device->canvas->content();
  if (content != nullptr) content->preferUnitsOf(state_.ctm);
  return content;
}

Paint Graphics::currentPaint() {
  if (state_.colour->isPattern()) return patterns_.paint(*state_.colour);
  return state_.colour->paint(document_.file());
}

void Graphics::fill(const Path& path, FillRule rule) {
  if (Path* const outlines = state_.device->canvas->outlines()) outlines->append(path);
  if (path.isEmpty() || state_.device->canvas->content() == nullptr) return;
  const std::optional<Paint> paint = patterns_.visiblePaint(*state_.colour);
  if (!paint) return;
  if (ContentWriter* target = content()) target->fill(path, rule, *paint, state_.clip, state_.rare);
}

void Graphics::stroke(const Path& path) {
  stroke(path, state_.ctm);
}

void Graphics::stroke(const Path& path, const Matrix& penMatrix) {
  if (Path* const outlines = state_.device->canvas->outlines()) outlines->append(strokeOutlineOf(path));
  if (path.isEmpty() || state_.device->canvas->content() == nullptr) return;
  const std::optional<Paint> paint = patterns_.visiblePaint(*state_.colour);
  if (!paint) return;
  if (ContentWriter* target = content()) {
    target->stroke(path, state_.line, penMatrix, *paint, state_.clip, state_.rare);
  }
}

Path Graphics::strokeOutlineOf(const Path& path) const {
  return strokeOutline(path, state_.line, state_.ctm, std::max(state_.flatness, 0.2));
}

void Graphics::trace(Tracer& tracer) const {
  state_.trace(tracer);
  for (const Saved& saved : stack_) saved.state.trace(tracer);
  patterns_.trace(tracer);
  for (const ColourSpacePointer& space : deviceSpaces_) space->trace(tracer);
  for (const KnownSpace& known : knownSpaces_) {
    tracer.visit(known.description);
    known.space->trace(tracer);
  }
}

}  // namespace quillpress::level3
