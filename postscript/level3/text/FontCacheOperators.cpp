#include "postscript/level3/operators/Operands.h"
#include "postscript/level3/text/TextOperators.h"

// There is no cache of rendered glyphs, so its parameters only read back as a job expects them.

namespace quillpress::level3 {

namespace {

constexpr int kCacheSize = 1'000'000;
constexpr int kMostFonts = 200;
constexpr int kMostGlyphs = 1000;
constexpr int kLargestGlyph = 10'000;
constexpr int kCompressedFrom = 5000;

// -> bsize bmax msize mmax csize cmax blimit
void cachestatus(Interpreter& interpreter) {
  interpreter.operands().require(7);
  for (const int value : {0, kCacheSize, 0, kMostFonts, 0, kMostGlyphs, kLargestGlyph}) {
    interpreter.operands().push(Object::integer(value));
  }
}

// num ->
void setcachelimit(Interpreter& interpreter) {
  countOf(interpreter.operands().top());
  interpreter.operands().pop();
}

// mark ... lower upper ->
void setcacheparams(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const std::size_t count = countToMark(interpreter);
  for (std::size_t i = 0; i < count; ++i) {
    if (!operands.top(i).isNumber()) raise(ErrorName::kTypeCheck);
  }
  operands.pop(count + 1);
}

// -> mark size lower upper
void currentcacheparams(Interpreter& interpreter) {
  interpreter.operands().require(4);
  interpreter.operands().push(Object::mark());
  for (const int value : {kCacheSize, kCompressedFrom, kLargestGlyph}) {
    interpreter.operands().push(Object::integer(value));
  }
}

constexpr OperatorRow kFontCacheOperators[] = {
    {"cachestatus", "", cachestatus},
    {"setcachelimit", "int", setcachelimit},
    {"setcacheparams", "", setcacheparams},
    {"currentcacheparams", "", currentcacheparams},
};

}  // namespace

void addFontCacheOperators(Interpreter& interpreter) {
  interpreter.addOperators(kFontCacheOperators);
}

}  // namespace quillpress::level3
