#include "postscript/level3/text/Type1Face.h"

#include <algorithm>
#include <cmath>

#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Fonts.h"

namespace quillpress::level3 {

namespace {

constexpr double kUsualUnit = 0.001;
// Accents upon accents do not exist; what nests deeper is a mistake.
constexpr int kMostAccentRounds = 4;

void addNumber(Fingerprinter& prints, double value) {
  prints.add({reinterpret_cast<const char*>(&value), sizeof value});
}

void addNumbers(Fingerprinter& prints, const std::vector<double>& values) {
  addNumber(prints, static_cast<double>(values.size()));
  for (const double value : values) addNumber(prints, value);
}

// What makes two fonts of a job the same program: all but the glyphs, which may come later.
Fingerprint contentOf(std::string_view name, const Type1Font::Data& data) {
  Fingerprinter prints;
  prints.add("Type1 ");
  prints.add(name);
  addNumber(prints, data.matrix.a);
  addNumbers(prints, data.weightVector);
  const CharstringPrivate& hints = data.privateData;
  addNumbers(prints, hints.blueValues);
  addNumbers(prints, hints.stdHW);
  addNumbers(prints, hints.stdVW);
  addNumber(prints, hints.lenIV);
  addNumber(prints, static_cast<double>(hints.subrs.size()));
  for (const std::string& subroutine : hints.subrs) {
    addNumber(prints, static_cast<double>(subroutine.size()));
    prints.add(subroutine);
  }
  return prints.finish();
}

}  // namespace

double unitOf(const Matrix& matrix) {
  const double unit = std::abs(matrix.d) > 0 ? std::abs(matrix.d) : matrix.meanScale();
  return unit >= 1e-6 && unit <= 1 ? unit : kUsualUnit;
}

CharstringPrivate readPrivate(Interpreter& interpreter, const Object& dictionary) {
  const FontEntries entries(interpreter, dictionary);
  CharstringPrivate hints;
  hints.blueValues = entries.numbers("BlueValues");
  hints.otherBlues = entries.numbers("OtherBlues");
  hints.familyBlues = entries.numbers("FamilyBlues");
  hints.familyOtherBlues = entries.numbers("FamilyOtherBlues");
  hints.stdHW = entries.numbers("StdHW");
  hints.stdVW = entries.numbers("StdVW");
  hints.stemSnapH = entries.numbers("StemSnapH");
  hints.stemSnapV = entries.numbers("StemSnapV");
  hints.blueScale = entries.number("BlueScale", hints.blueScale);
  hints.blueShift = entries.number("BlueShift", hints.blueShift);
  hints.blueFuzz = entries.number("BlueFuzz", hints.blueFuzz);
  hints.expansionFactor = entries.number("ExpansionFactor", hints.expansionFactor);
  hints.languageGroup = static_cast<int>(entries.integer("LanguageGroup", 0) == 1);
  hints.forceBold = entries.boolean("ForceBold", false);
  hints.lenIV = static_cast<int>(std::clamp<std::int64_t>(entries.integer("lenIV", 4), -1, 1000));
  const Object subroutines = entries.array("Subrs");
  if (subroutines.isNull()) return hints;
  for (const Object& subroutine : elementsOf(subroutines)) {
    hints.subrs.emplace_back(subroutine.isString() ? textOf(subroutine) : std::string_view());
  }
  return hints;
}

std::shared_ptr<Face> Type1Face::make(Fonts& fonts, const Object& font) {
  Interpreter& interpreter = fonts.interpreter();
  const FontEntries entries(interpreter, font);
  if (!entries.require("CharStrings").isDictionary()) raise(ErrorName::kInvalidFont);
  Type1Font::Data data;
  const double unit = unitOf(fonts.definedMatrix(font));
  data.matrix = Matrix::scaling(unit, unit);
  data.privateData = readPrivate(interpreter, entries.require("Private"));
  data.weightVector = entries.numbers("WeightVector");
  const std::string name(entries.text("FontName"));
  const Fingerprint content = contentOf(name, data);
  const auto program = fonts.program(content, [&] {
    return std::make_unique<OutlineProgram>(std::make_unique<Type1Font>(std::move(data)), name, unit,
                                            OutlineProgram::Form::kSimple);
  });
  return std::make_shared<Type1Face>(fonts, font, program);
}

Type1Face::Type1Face(Fonts& fonts, const Object& font, const std::shared_ptr<OutlineProgram>& program)
    : OutlineFace(fonts, font, program),
      outlines_(static_cast<Type1Font&>(program->font())),
      charStrings_(fonts.interpreter().memory().name("CharStrings")),
      notdef_(fonts.interpreter().memory().name(".notdef")) {}

bool Type1Face::isNotdef(const GlyphKey& key) const {
  return key.name == notdef_;
}

Object Type1Face::sourceOf(const Object& font, const GlyphKey& key) {
  const Object* const charStrings = font.asDictionary()->find(charStrings_);
  if (charStrings == nullptr || !charStrings->isDictionary() || key.name == nullptr) return {};
  const Object* charstring = charStrings->asDictionary()->find(key.name);
  if (charstring == nullptr) charstring = charStrings->asDictionary()->find(notdef_);
  return charstring != nullptr ? *charstring : Object();
}

std::optional<OutlineFace::Found> Type1Face::read(const Object& font, const GlyphKey& key,
                                                  const Object& source) {
  if (!source.isString()) return std::nullopt;
  const Object& charStrings = *font.asDictionary()->find(charStrings_);
  const bool isKnown = charStrings.asDictionary()->find(key.name) != nullptr;
  try {
    const GlyphIndex index = outlines_.add((isKnown ? key.name : notdef_)->text(), textOf(source));
    addParts(charStrings, index);
    return Found{index, !isKnown};
  } catch (const FontError&) {
    return std::nullopt;
  }
}

// What an accented glyph is put together from comes along.
void Type1Face::addParts(const Object& charStrings, GlyphIndex index) {
  Interpreter& interpreter = fonts().interpreter();
  for (int round = 0; round < kMostAccentRounds; ++round) {
    bool hasAdded = false;
    for (const std::string& name : outlines_.missingParts(index)) {
      const Object* const part = charStrings.asDictionary()->find(interpreter.memory().name(name));
      if (part == nullptr || !part->isString()) continue;
      outlines_.add(name, textOf(*part));
      hasAdded = true;
    }
    if (!hasAdded) return;
  }
}

}  // namespace quillpress::level3
