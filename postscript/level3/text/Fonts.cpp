#include "postscript/level3/text/Fonts.h"

#include <algorithm>

#include "postscript/level3/text/CffFace.h"
#include "postscript/level3/text/CidFace.h"
#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Type1Face.h"
#include "postscript/level3/text/Type3Face.h"
#include "postscript/level3/text/Type42Face.h"

namespace quillpress::level3 {

bool TextLine::isFor(const GraphicsState& state, const Matrix& characterMatrix) const {
  return content != nullptr && colour == state.colour && rare == state.rare && ctm.a == state.ctm.a &&
         ctm.b == state.ctm.b && ctm.c == state.ctm.c && ctm.d == state.ctm.d && matrix == characterMatrix;
}

Fonts::Fonts(Interpreter& interpreter, Graphics& graphics)
    : interpreter_(interpreter),
      graphics_(graphics),
      fontId_(interpreter.memory().name("FID")),
      fontType_(interpreter.memory().name("FontType")),
      fontMatrix_(interpreter.memory().name("FontMatrix")),
      encoding_(interpreter.memory().name("Encoding")) {}

Fonts::~Fonts() = default;

Object Fonts::newFontId(const Matrix& matrix) {
  definitions_.insert_or_assign(++lastNumber_, matrix);
  return Object::fontId(lastNumber_);
}

const std::shared_ptr<Face>& Fonts::faceOf(const Object& font) {
  if (!font.isDictionary()) raise(ErrorName::kInvalidFont);
  const Object* const number = font.asDictionary()->find(fontId_);
  if (number == nullptr || !number->is(Type::kFontId)) raise(ErrorName::kInvalidFont);
  const std::int64_t wanted = number->asInteger();
  if (lastFound_ != nullptr && lastFace_ == wanted) return *lastFound_;
  const auto known = faces_.find(wanted);
  if (known != faces_.end()) return remember(wanted, known->second);
  std::shared_ptr<Face> face = makeFace(font);
  const Object glyphs = FontEntries(interpreter_, font).dictionary("CharStrings");
  const auto substitution =
      glyphs.isNull() ? substitutions_.end() : substitutions_.find(glyphs.asDictionary());
  if (substitution != substitutions_.end()) substitution->second.isUsed = true;
  return remember(wanted, faces_.emplace(wanted, std::move(face)).first->second);
}

const std::shared_ptr<Face>& Fonts::remember(std::int64_t number, const std::shared_ptr<Face>& face) {
  lastFace_ = number;
  lastFound_ = &face;
  return face;
}

bool Fonts::isComposite(const Object& font) const {
  const Object* const type = font.asDictionary()->find(fontType_);
  return type != nullptr && type->isInteger() && type->asInteger() == 0;
}

const ShownFont& Fonts::shown(const Object& font) {
  if (!font.isDictionary()) raise(ErrorName::kInvalidFont);
  const Dictionary& dictionary = *font.asDictionary();
  if (shown_.font.isDictionary() && shown_.font.asDictionary() == &dictionary) return shown_;
  ShownFont shown;
  if (!dictionary.isWritable()) shown.font = font;
  shown.isComposite = isComposite(font);
  const Object* const matrix = dictionary.find(fontMatrix_);
  const std::optional<Matrix> read = matrix == nullptr ? std::nullopt : matrixIn(*matrix);
  if (!read) raise(ErrorName::kInvalidFont);
  shown.matrix = *read;
  if (!shown.isComposite) {
    shown.face = faceOf(font);
    const Object* const encoding = dictionary.find(encoding_);
    if (encoding != nullptr && encoding->isArray()) shown.encoding = *encoding;
  }
  return shown_ = std::move(shown);
}

std::shared_ptr<Face> Fonts::makeFace(const Object& font) {
  switch (FontEntries(interpreter_, font).integer("FontType", -1)) {
    case 1:
      return Type1Face::make(*this, font);
    case 2:
      return CffFace::make(*this, font);
    case 3:
    case 10:
    case 32:
      return std::make_shared<Type3Face>(*this, font);
    case 9:
      return FontEntries(interpreter_, font).find(kFontSetKey) != nullptr ? CffFace::make(*this, font)
                                                                          : CidFace::make(*this, font);
    case 11:
    case 42:
      return Type42Face::make(*this, font);
    default:
      raise(ErrorName::kInvalidFont);
  }
}

Matrix Fonts::definedMatrix(const Object& font) const {
  const Object* const number = font.asDictionary()->find(fontId_);
  const auto found = number != nullptr ? definitions_.find(number->asInteger()) : definitions_.end();
  if (found != definitions_.end()) return found->second;
  return FontEntries(interpreter_, font).requireMatrix("FontMatrix");
}

std::shared_ptr<OutlineProgram> Fonts::program(const Fingerprint& content,
                                               const std::function<std::unique_ptr<OutlineProgram>()>& make) {
  const auto known = programs_.find(content);
  if (known != programs_.end()) return known->second;
  std::shared_ptr<OutlineProgram> made = make();
  programs_.emplace(content, made);
  order_.push_back(made.get());
  return made;
}

Type3Program& Fonts::type3Program(const std::string& name, const Matrix& matrix) {
  for (const auto& program : type3Programs_) {
    if (program->name() == name && program->matrix() == matrix) return *program;
  }
  return *type3Programs_.emplace_back(std::make_unique<Type3Program>(name, matrix));
}

std::int64_t Fonts::newCMap() {
  cmaps_.push_back(std::make_unique<CMap>());
  return static_cast<std::int64_t>(cmaps_.size()) - 1;
}

CMap* Fonts::cmap(std::int64_t number) {
  const auto index = static_cast<std::size_t>(number);
  return number >= 0 && index < cmaps_.size() ? cmaps_[index].get() : nullptr;
}

void Fonts::noteSubstitution(const Object& font, std::string_view wanted, std::string_view used) {
  const Object glyphs = FontEntries(interpreter_, font).dictionary("CharStrings");
  substitutions_.insert_or_assign(glyphs.asDictionary(),
                                  Substitution{std::string(wanted), std::string(used)});
}

void Fonts::finish() {
  PdfFile& file = graphics_.document().file();
  for (OutlineProgram* const program : order_) program->write(file);
  for (const auto& program : type3Programs_) program->write(file);
}

std::vector<std::string> Fonts::warnings() const {
  std::vector<std::string> lines;
  for (const auto& [glyphs, font] : substitutions_) {
    if (font.isUsed) lines.push_back("font " + font.wanted + " replaced by " + font.used);
  }
  std::sort(lines.begin(), lines.end());
  std::size_t missing = missingGlyphs_;
  for (const OutlineProgram* const program : order_) missing += program->brokenGlyphs();
  if (missing == 1) lines.emplace_back("a font lacks 1 character of the text");
  if (missing > 1) lines.push_back("fonts lack " + std::to_string(missing) + " characters of the text");
  return lines;
}

std::vector<std::string> Fonts::substitutedFonts() const {
  std::vector<std::string> names;
  for (const auto& [glyphs, font] : substitutions_) {
    if (font.isUsed) names.push_back(font.wanted);
  }
  std::sort(names.begin(), names.end());
  return names;
}

void Fonts::trace(Tracer& tracer) const {
  for (const auto& [number, face] : faces_) face->trace(tracer);
  tracer.visit(shown_.font);
}

void Fonts::onSave(std::uint32_t serial) {
  saves_.insert_or_assign(serial, lastNumber_);
}

// Fonts defined since the save are gone, save those in global memory, which are read again when they are
// used.
void Fonts::onRestore(std::uint32_t serial) {
  shown_ = {};
  const auto save = saves_.find(serial);
  if (save == saves_.end()) return;
  lastFound_ = nullptr;
  std::erase_if(faces_, [&](const auto& face) { return face.first > save->second; });
  saves_.erase(save, saves_.end());
}

}  // namespace quillpress::level3
