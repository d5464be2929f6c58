#pragma once

#include "postscript/level3/device/PageDevice.h"
#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/interpreter/Interpreter.h"
#include "postscript/level3/pdf/PdfDocument.h"
#include "postscript/level3/text/Fonts.h"

namespace quillpress::level3 {

// An interpreter with all operators of the language, whose pages go into a document.
class Machine {
 public:
  struct Files {
    SourcePointer input;
    SinkPointer output;
    SinkPointer errors;
  };

  // The page is `width` by `height` points until the job asks for another one.
  Machine(Output& output, const Files& files, double width, double height);

  Interpreter& interpreter() { return interpreter_; }
  PdfDocument& document() { return document_; }
  Graphics& graphics() { return *graphics_; }
  PageDevice& device() { return *device_; }
  Fonts& fonts() { return *fonts_; }

 private:
  PdfDocument document_;
  Interpreter interpreter_;
  Graphics* graphics_;
  Fonts* fonts_;
  PageDevice* device_;
};

// For programs of which no page is wanted.
class NoOutput final : public Output {
 public:
  void write(std::string_view /*bytes*/) override {}
};

}  // namespace quillpress::level3
