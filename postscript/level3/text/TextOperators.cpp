#include "postscript/level3/text/TextOperators.h"

#include "postscript/level3/text/FontData.h"

namespace quillpress::level3 {

void addTextOperators(Interpreter& interpreter) {
  addFontOperators(interpreter);
  addFontResources(interpreter);
  addShowOperators(interpreter);
  addGlyphOperators(interpreter);
  addFontCacheOperators(interpreter);
  addCMapOperators(interpreter);
  addFontSetOperators(interpreter);
  addBitmapFontOperators(interpreter);
}

}  // namespace quillpress::level3
