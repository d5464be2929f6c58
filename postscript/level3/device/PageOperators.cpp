#include "postscript/level3/device/DeviceOperators.h"
#include "postscript/level3/device/PageDevice.h"

namespace quillpress::level3 {

namespace {

// dict ->
void setPageDevice(Interpreter& interpreter) {
  const Object request = interpreter.operands().top();
  const Rooted kept(interpreter.memory(), request);
  interpreter.operands().pop();
  try {
    pageDeviceOf(interpreter).setPageDevice(request);
  } catch (const PostscriptError&) {
    interpreter.operands().push(request);
    throw;
  }
}

// -> dict
void currentPageDevice(Interpreter& interpreter) {
  interpreter.operands().require(1);
  interpreter.operands().push(pageDeviceOf(interpreter).currentPageDevice());
}

// What the caller of the conversion says to a page counts before anything else is painted.
void showPage(Interpreter& interpreter) {
  pageDeviceOf(interpreter).showPage();
  interpreter.endIfInterrupted();
}
void copyPage(Interpreter& interpreter) {
  pageDeviceOf(interpreter).copyPage();
  interpreter.endIfInterrupted();
}
void erasePage(Interpreter& interpreter) {
  pageDeviceOf(interpreter).erasePage();
}
void nullDevice(Interpreter& interpreter) {
  pageDeviceOf(interpreter).installNullDevice();
}

constexpr OperatorRow kPageOperators[] = {
    {"setpagedevice", "dict", setPageDevice},
    {"currentpagedevice", "", currentPageDevice},
    {"showpage", "", showPage},
    {"copypage", "", copyPage},
    {"erasepage", "", erasePage},
    {"nulldevice", "", nullDevice},
};

}  // namespace

void addPageOperators(Interpreter& interpreter) {
  interpreter.addOperators(kPageOperators);
}

void addDeviceOperators(Interpreter& interpreter) {
  addPageOperators(interpreter);
  addPdfMarkOperator(interpreter);
  addPaperSizes(interpreter);
  addStatusDictionary(interpreter);
}

}  // namespace quillpress::level3
