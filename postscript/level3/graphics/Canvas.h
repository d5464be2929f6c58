#pragma once

#include <memory>
#include <utility>

#include "postscript/level3/geometry/Box.h"
#include "postscript/level3/graphics/TextDirections.h"
#include "postscript/level3/pdf/ContentWriter.h"

namespace quillpress::level3 {

// What painting goes to: a page, a form, a pattern's cell, or nothing at all. A state may outlive what it
// painted on; what is painted then goes nowhere.
class Canvas {
 public:
  explicit Canvas(ContentWriter* content) : content_(content) {}
  // What is filled and stroked becomes part of a path, for charpath.
  explicit Canvas(Path* outlines) : outlines_(outlines) {}

  // Null when painting goes nowhere.
  ContentWriter* content() const { return content_; }
  // Null except for charpath.
  Path* outlines() const { return outlines_; }
  // Of the text that is shown here.
  TextDirections& textDirections() { return textDirections_; }
  // Gives back where painting went before.
  ContentWriter* redirect(ContentWriter* content) { return std::exchange(content_, content); }
  void close() {
    content_ = nullptr;
    outlines_ = nullptr;
  }

 private:
  ContentWriter* content_ = nullptr;
  Path* outlines_ = nullptr;
  TextDirections textDirections_;
};

// A device as the graphics state knows it.
struct Device {
  Matrix defaultMatrix;
  // What initclip opens, in device space.
  Box area;
  std::shared_ptr<Canvas> canvas;
  // In a pattern without colours of its own, setting a colour is an error.
  bool isUncoloured = false;
  // nulldevice, which leaves the matrix alone.
  bool isNull = false;
};
using DevicePointer = std::shared_ptr<const Device>;

}  // namespace quillpress::level3
