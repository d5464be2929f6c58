#include "postscript/level3/graphics/Capture.h"

#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

// Painting on it ends with the capture, also when a state is kept for longer.
class CanvasScope {
 public:
  template <typename Target>
  explicit CanvasScope(Target& target) : canvas_(std::make_shared<Canvas>(&target)) {}
  ~CanvasScope() { canvas_->close(); }
  CanvasScope(const CanvasScope&) = delete;
  CanvasScope& operator=(const CanvasScope&) = delete;

  const std::shared_ptr<Canvas>& canvas() const { return canvas_; }

 private:
  std::shared_ptr<Canvas> canvas_;
};

}  // namespace

Captured capture(Graphics& graphics, const CaptureSettings& settings, const std::function<void()>& paint) {
  const Box area = transformed(settings.box, settings.spaceToDevice);
  Path box;
  box.appendRectangle(settings.box);
  const ClipPointer clip = Clip::within(nullptr, box.transformed(settings.spaceToDevice), FillRule::kNonzero);
  ContentWriter::Settings contentSettings{inverseOf(settings.spaceToDevice), area,
                                          settings.beginsWithDefaults, clip};
  contentSettings.inlinesImages = settings.isGlyph;
  if (settings.isGlyph) contentSettings.rare = graphics.state().rare;
  ContentWriter content(graphics.document().file(), contentSettings);
  const GraphicsScope scope(graphics);
  const CanvasScope canvas(content);
  GraphicsState& state = graphics.state();
  auto device = std::make_shared<Device>(*state.device);
  device->area = area;
  device->canvas = canvas.canvas();
  device->isUncoloured = settings.isUncoloured || state.device->isUncoloured;
  state.device = std::move(device);
  state.ctm = settings.spaceToDevice;
  state.path.clear();
  state.pathBounds.reset();
  state.clip = clip;
  paint();
  content.finish();
  return {std::move(content.text()), content.resources().text(), content.resources()};
}

Path captureOutlines(Graphics& graphics, const Matrix& spaceToDevice, const std::function<void()>& paint) {
  Path outlines;
  const GraphicsScope scope(graphics);
  const CanvasScope canvas(outlines);
  GraphicsState& state = graphics.state();
  auto device = std::make_shared<Device>(*state.device);
  device->canvas = canvas.canvas();
  state.device = std::move(device);
  state.ctm = spaceToDevice;
  state.path.clear();
  state.pathBounds.reset();
  paint();
  return outlines;
}

}  // namespace quillpress::level3
