#pragma once

#include <functional>
#include <string>

#include "postscript/level3/graphics/Graphics.h"

namespace quillpress::level3 {

// Content that a procedure of the job has painted into a space of its own.
struct Captured {
  std::string content;
  std::string resources;
  ContentResources used;
};

// Runs `paint` with a graphics state whose matrix is `spaceToDevice` and whose clip is the box in that space;
// what it paints is gathered. The state is as before at the end, whatever happens.
struct CaptureSettings {
  Matrix spaceToDevice;
  Box box;
  // Content begins with PDF's initial state, as a pattern's does.
  bool beginsWithDefaults = false;
  bool isUncoloured = false;
  // A glyph's: small images stand in it, and the parameters in force are those of the text.
  bool isGlyph = false;
};
Captured capture(Graphics& graphics, const CaptureSettings& settings, const std::function<void()>& paint);

// The same for a procedure whose painting is wanted as a path in device space.
Path captureOutlines(Graphics& graphics, const Matrix& spaceToDevice, const std::function<void()>& paint);

}  // namespace quillpress::level3
