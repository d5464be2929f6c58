#include "postscript/level3/text/TextCursor.h"

#include "postscript/level3/text/CMapReader.h"
#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Fonts.h"

namespace quillpress::level3 {

namespace {

constexpr std::int64_t kUsualEscape = 255;
constexpr std::int64_t kUsualShiftIn = 15;
constexpr std::int64_t kUsualShiftOut = 14;

}  // namespace

Name* encodedName(Interpreter& interpreter, const Object& font, std::uint32_t code) {
  const Object* const encoding = font.asDictionary()->find(interpreter.memory().name("Encoding"));
  if (encoding == nullptr || !encoding->isArray() || code >= encoding->length()) return nullptr;
  const Object& name = encoding->elements()[code];
  return name.isName() ? name.asName() : nullptr;
}

GlyphKey namedGlyph(Interpreter& interpreter, const Object& font, Name* name) {
  const Object* const encoding = font.asDictionary()->find(interpreter.memory().name("Encoding"));
  if (encoding == nullptr || !encoding->isArray()) return {name, 0};
  Name* const notdef = interpreter.memory().name(".notdef");
  std::uint32_t notdefCode = 0;
  for (std::uint32_t code = 0; code < encoding->length(); ++code) {
    const Object& each = encoding->elements()[code];
    if (!each.isName()) continue;
    if (each.asName() == name) return {name, code};
    if (each.asName() == notdef) notdefCode = code;
  }
  return {name, notdefCode};
}

TextCursor::TextCursor(Interpreter& interpreter, const Object& font, std::string bytes)
    : interpreter_(interpreter), font_(font), bytes_(std::move(bytes)), scope_(interpreter.memory(), *this) {
  character_.font = font;
  if (font.isNull()) return;
  const ShownFont& shown = fontsOf(interpreter).shown(font);
  isComposite_ = shown.isComposite;
  character_.matrix = shown.matrix;
  character_.face = shown.face;
  encoding_ = shown.encoding;
}

void TextCursor::trace(Tracer& tracer) const {
  tracer.visit(font_);
  tracer.visit(encoding_);
  tracer.visit(character_.font);
}

std::uint32_t TextCursor::takeByte() {
  if (!hasByte()) raise(ErrorName::kRangeCheck);
  return static_cast<unsigned char>(bytes_[position_++]);
}

const TextCharacter* TextCursor::next() {
  if (!hasByte()) return nullptr;
  if (isComposite_) return descend(font_, Matrix(), 0) ? &character_ : nullptr;
  nextSimple();
  return &character_;
}

void TextCursor::nextSimple() {
  const std::uint32_t code = takeByte();
  Name* name = nullptr;
  if (encoding_.isArray() && code < encoding_.length()) {
    const Object& entry = encoding_.elements()[code];
    if (entry.isName()) name = entry.asName();
  }
  if (name == nullptr) name = interpreter_.memory().name(".notdef");
  character_.code = code;
  character_.key = {name, code};
}

// FDepVector's font for a font number, by way of Encoding.
Object TextCursor::descendant(const Object& composite, std::uint32_t number) const {
  const FontEntries entries(interpreter_, composite);
  const Object encoding = entries.array("Encoding");
  const Object fonts = entries.array("FDepVector");
  if (fonts.isNull()) raise(ErrorName::kInvalidFont);
  std::uint64_t index = number;
  if (encoding.isArray()) {
    if (number >= encoding.length()) raise(ErrorName::kRangeCheck);
    const Object& entry = encoding.elements()[number];
    if (!entry.isInteger() || entry.asInteger() < 0) raise(ErrorName::kRangeCheck);
    index = static_cast<std::uint64_t>(entry.asInteger());
  }
  if (index >= fonts.length() || !fonts.elements()[index].isDictionary()) raise(ErrorName::kRangeCheck);
  return fonts.elements()[index];
}

void TextCursor::select(const Object& font, const Matrix& outer, std::uint32_t code) {
  const FontEntries entries(interpreter_, font);
  character_.font = font;
  character_.face = fontsOf(interpreter_).faceOf(font);
  character_.matrix = entries.requireMatrix("FontMatrix") * outer;
  const bool isCid = entries.find("CIDFontType") != nullptr;
  character_.key = {isCid ? nullptr : encodedName(interpreter_, font, code), code};
  if (!isCid && character_.key.name == nullptr) character_.key.name = interpreter_.memory().name(".notdef");
}

bool TextCursor::descend(const Object& composite, const Matrix& matrix, std::size_t depth) {
  if (depth >= kMaxDepth) raise(ErrorName::kInvalidFont);
  const FontEntries entries(interpreter_, composite);
  const Matrix own = entries.requireMatrix("FontMatrix") * matrix;
  if (depth == 0) character_.isVertical = entries.integer("WMode", 0) == 1;
  const std::int64_t mapping = entries.integer("FMapType", 0);
  if (mapping == 9) return descendByCMap(composite, own, depth);
  std::uint32_t number = 0;
  std::uint32_t code = 0;
  bool hasCode = false;
  switch (mapping) {
    case 2:
      number = takeByte();
      break;
    case 3:
    case 7: {
      const auto escape = static_cast<std::uint32_t>(entries.integer("EscChar", kUsualEscape));
      for (;;) {
        if (!hasByte()) return false;
        code = takeByte();
        if (code != escape) break;
        if (!hasByte()) return false;
        number = takeByte();
        if (mapping == 7 && number == escape) number = 256 + takeByte();
        selections_[depth].font = number;
      }
      number = selections_[depth].font;
      hasCode = true;
      break;
    }
    case 4:
      code = takeByte();
      number = code >> 7;
      code &= 0x7f;
      hasCode = true;
      break;
    case 5:
      code = takeByte() << 8;
      code |= takeByte();
      number = code >> 7;
      code &= 0x7f;
      hasCode = true;
      break;
    case 6: {
      const Object* const ranges = entries.find("SubsVector");
      if (ranges == nullptr || !ranges->isString() || ranges->length() == 0) raise(ErrorName::kInvalidFont);
      const std::string_view vector = level3::textOf(*ranges);
      const auto width = static_cast<std::size_t>(static_cast<unsigned char>(vector[0])) + 1;
      if (width > 4) raise(ErrorName::kInvalidFont);
      for (std::size_t i = 0; i < width; ++i) code = code << 8 | takeByte();
      for (std::size_t place = 1; place + width <= vector.size(); place += width, ++number) {
        std::uint32_t size = 0;
        for (std::size_t i = 0; i < width; ++i)
          size = size << 8 | static_cast<unsigned char>(vector[place + i]);
        if (code < size) break;
        code -= size;
      }
      hasCode = true;
      break;
    }
    case 8: {
      const auto in = static_cast<std::uint32_t>(entries.integer("ShiftIn", kUsualShiftIn));
      const auto out = static_cast<std::uint32_t>(entries.integer("ShiftOut", kUsualShiftOut));
      for (;;) {
        if (!hasByte()) return false;
        code = takeByte();
        if (code != in && code != out) break;
        selections_[depth].font = code == out ? 1 : 0;
      }
      number = selections_[depth].font;
      hasCode = true;
      break;
    }
    default:
      raise(ErrorName::kInvalidFont);
  }
  const Object font = descendant(composite, number);
  if (FontEntries(interpreter_, font).integer("FontType", -1) == 0) {
    // What has been read as the character belongs to the font within.
    if (hasCode) bytes_[--position_] = static_cast<char>(code);
    return descend(font, own, depth + 1);
  }
  if (!hasCode) code = takeByte();
  character_.code = mapping == 2 ? number << 8 | code : code;
  select(font, own, code);
  return true;
}

bool TextCursor::descendByCMap(const Object& composite, const Matrix& matrix, std::size_t depth) {
  const FontEntries entries(interpreter_, composite);
  const CMap& map = cmapOf(interpreter_, entries.dictionary("CMap"));
  const CMap::Found found = map.find(std::string_view(bytes_).substr(position_));
  position_ += found.length;
  const Object fonts = entries.array("FDepVector");
  if (fonts.isNull() || found.font >= fonts.length()) raise(ErrorName::kRangeCheck);
  const Object font = fonts.elements()[found.font];
  if (!font.isDictionary()) raise(ErrorName::kInvalidFont);
  if (FontEntries(interpreter_, font).integer("FontType", -1) == 0) {
    std::string code;
    code += static_cast<char>(found.value & 0xff);
    position_ -= 1;
    bytes_[position_] = code[0];
    return descend(font, matrix, depth + 1);
  }
  character_.code = found.code;
  select(font, matrix, found.value);
  if (found.target == CMap::Target::kName && character_.key.name != nullptr) character_.key.name = found.name;
  return true;
}

}  // namespace quillpress::level3
