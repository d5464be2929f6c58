#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/operators/Operands.h"
#include "postscript/level3/operators/Resources.h"
#include "postscript/level3/text/CffFace.h"
#include "postscript/level3/text/FontData.h"
#include "postscript/level3/text/FontInstances.h"

// The procedure set FontSetInit: each font of a CFF FontSet becomes a font dictionary of type 2, or a
// CIDFont. Their glyphs stay in the FontSet's bytes.

namespace quillpress::level3 {

namespace {

constexpr int kCffFontType = 2;

class FontSetReader {
 public:
  FontSetReader(Interpreter& interpreter, const Object& bytes)
      : interpreter_(interpreter), memory_(interpreter.memory()), bytes_(bytes) {}

  Object fontAt(std::size_t place) {
    const CffFont outlines(std::string(textOf(bytes_)), place);
    const Object font = memory_.newDictionary(14);
    putCommon(font, outlines, place);
    const Object name = Object::literalName(memory_.internName(outlines.name()));
    if (outlines.isCid()) {
      putCidEntries(font, outlines);
      put(font, "CIDFontName", name);
      return defineFont(interpreter_, "CIDFont", name, font);
    }
    putNames(font, outlines);
    put(font, "FontName", name);
    return defineFont(interpreter_, "Font", name, font);
  }

 private:
  void put(const Object& dictionary, std::string_view key, const Object& value) {
    memory_.put(*dictionary.asDictionary(), memory_.name(key), value);
  }

  void putCommon(const Object& font, const CffFont& outlines, std::size_t place) {
    const Object matrix = memory_.newArray(6);
    storeMatrix(interpreter_, matrix, outlines.matrix());
    put(font, "FontMatrix", matrix);
    const Box& box = outlines.bounds();
    std::vector<Object> corners;
    for (const double corner : {box.left, box.bottom, box.right, box.top}) corners.push_back(realOf(corner));
    put(font, "FontBBox", memory_.newArray(corners));
    put(font, "PaintType", Object::integer(0));
    put(font, "FontInfo", memory_.newDictionary(4));
    put(font, "Private", memory_.newDictionary(1));
    put(font, kFontSetKey, bytes_);
    put(font, kFontSetPlaceKey, Object::integer(static_cast<std::int64_t>(place)));
  }

  void putCidEntries(const Object& font, const CffFont& outlines) {
    put(font, "CIDFontType", Object::integer(0));
    put(font, "CIDCount", Object::integer(static_cast<std::int64_t>(outlines.glyphCount())));
  }

  Object nameOf(const CffFont& outlines, GlyphIndex glyph) {
    const std::string name = glyph == 0 ? std::string() : outlines.glyphName(glyph);
    return Object::literalName(memory_.internName(name.empty() ? ".notdef" : name));
  }

  // CharStrings has numbers of glyphs.
  void putNames(const Object& font, const CffFont& outlines) {
    put(font, "FontType", Object::integer(kCffFontType));
    std::vector<Object> encoding;
    for (const GlyphIndex glyph : outlines.encoding()) encoding.push_back(nameOf(outlines, glyph));
    put(font, "Encoding", memory_.newArray(encoding));
    const Object charStrings = memory_.newDictionary(outlines.glyphCount());
    for (GlyphIndex glyph = 0; glyph < outlines.glyphCount(); ++glyph) {
      memory_.put(*charStrings.asDictionary(), nameOf(outlines, glyph), Object::integer(glyph));
    }
    put(font, "CharStrings", charStrings);
  }

  Interpreter& interpreter_;
  VirtualMemory& memory_;
  Object bytes_;
};

// fontsetname length StartData ->      The data follow.
void startFontSetData(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  VirtualMemory& memory = interpreter.memory();
  const std::size_t count = countOf(operands.top());
  const Object name = operands.top(1).asLiteral();
  const Object bytes = memory.newString(dataBehind(interpreter, count, false));
  const Object set = memory.newDictionary(2);
  try {
    FontSetReader reader(interpreter, bytes);
    const std::size_t fonts = CffFont::fontNames(textOf(bytes)).size();
    for (std::size_t place = 0; place < fonts; ++place) {
      const Object font = reader.fontAt(place);
      const Object key = memory.newString(std::to_string(place));
      memory.put(*set.asDictionary(), memory.keyOf(key), font);
    }
  } catch (const FontError&) {
    raise(ErrorName::kInvalidFont);
  }
  operands.pop(2);
  Resources(interpreter).define(memory.name("FontSet"), name, set);
  endProcedureSet(interpreter);
}

}  // namespace

void addFontSetOperators(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  memory.setGlobal(true);
  const Object set = memory.newDictionary(1);
  memory.put(*set.asDictionary(), memory.name("StartData"),
             interpreter.addInternal("StartData", startFontSetData, "name|string int"));
  Resources(interpreter).define(memory.name("ProcSet"), Object::literalName(memory.name("FontSetInit")), set);
  memory.setGlobal(false);
}

}  // namespace quillpress::level3
