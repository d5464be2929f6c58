#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "postscript/level3/colour/Colour.h"
#include "postscript/level3/geometry/Clip.h"
#include "postscript/level3/geometry/Stroking.h"
#include "postscript/level3/graphics/Canvas.h"
#include "postscript/level3/objects/Tracer.h"

namespace quillpress::level3 {

// Parameters of rendering that a PDF page does not take over. They are kept, so that a job reads back what it
// set.
struct RenderingParameters {
  Object halftone;
  std::array<Object, 4> transfer;  // red, green, blue, gray
  Object blackGeneration;
  Object undercolorRemoval;
  Object colorRendering;
  // setscreen's frequency, angle and procedure for each of four colours; as numbers and a spot function.
  std::array<std::array<Object, 3>, 4> screens;
  bool hasScreens = true;

  void trace(Tracer& tracer) const;
};

// Everything that gsave keeps. Copies share what is large.
struct GraphicsState {
  Matrix ctm;
  Path path;
  // A box that path construction must stay within, in device space, from setbbox.
  std::optional<Box> pathBounds;
  ClipPointer clip;
  std::vector<ClipPointer> clipStack;
  ColourPointer colour;
  LineStyle line;
  double flatness = 1;
  double smoothness = 0.02;
  RareParameters rare;
  DevicePointer device;
  Object font;
  Object rootFont;
  std::shared_ptr<const RenderingParameters> rendering;
  // Set by the device's folder; what currentpagedevice shows.
  Object pageDevice;

  void trace(Tracer& tracer) const;
};

}  // namespace quillpress::level3
