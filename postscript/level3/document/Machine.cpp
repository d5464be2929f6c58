#include "postscript/level3/document/Machine.h"

#include "postscript/level3/device/DeviceOperators.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/text/TextOperators.h"

namespace quillpress::level3 {

Machine::Machine(Output& output, const Files& files, double width, double height) : document_(output) {
  interpreter_.setStandardFiles(files.input, files.output, files.errors);
  addLanguageOperators(interpreter_);
  graphics_ = &interpreter_.addExtension<Graphics>(interpreter_, document_);
  fonts_ = &interpreter_.addExtension<Fonts>(interpreter_, *graphics_);
  device_ = &interpreter_.addExtension<PageDevice>(interpreter_, *graphics_, document_);
  addGraphicsOperators(interpreter_);
  addTextOperators(interpreter_);
  addDeviceOperators(interpreter_);
  interpreter_.finishSetUp();
  device_->start(width, height);
}

}  // namespace quillpress::level3
