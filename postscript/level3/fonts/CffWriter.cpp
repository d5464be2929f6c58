#include "postscript/level3/fonts/CffWriter.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_set>

#include "postscript/level3/fonts/ByteWriter.h"
#include "postscript/level3/fonts/CffDict.h"
#include "postscript/level3/fonts/CffStandard.h"
#include "postscript/level3/fonts/Charstrings.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kMostGlyphs = 65535;

bool isUsual(const Matrix& matrix) {
  const auto isNear = [](double left, double right) { return std::abs(left - right) < 1e-9; };
  return isNear(matrix.a, 0.001) && isNear(matrix.b, 0) && isNear(matrix.c, 0) && isNear(matrix.d, 0.001) &&
         isNear(matrix.tx, 0) && isNear(matrix.ty, 0);
}

struct OutputGlyph {
  std::string name;
  std::size_t fontDictionary = 0;
  GlyphProgram program;
};

std::string indexOf(const std::vector<std::string>& items) {
  std::string bytes;
  append16(bytes, static_cast<std::uint32_t>(items.size()));
  if (items.empty()) return bytes;
  std::size_t end = 1;
  for (const std::string& item : items) end += item.size();
  const std::size_t offsetSize = end <= 0xFF ? 1 : end <= 0xFFFF ? 2 : end <= 0xFFFFFF ? 3 : 4;
  append8(bytes, static_cast<std::uint32_t>(offsetSize));
  std::size_t offset = 1;
  appendBytes(bytes, 1, offsetSize);
  for (const std::string& item : items) {
    offset += item.size();
    appendBytes(bytes, static_cast<std::uint32_t>(offset), offsetSize);
  }
  for (const std::string& item : items) bytes += item;
  return bytes;
}

// Without what PostScript would read as the end of a name, and no longer than names of CFF may be.
std::string cleanFontName(std::string_view name) {
  std::string clean;
  for (const char character : name) {
    const bool isAllowed = character > ' ' && character < 0x7F &&
                           std::string_view("[](){}<>/%").find(character) == std::string_view::npos;
    if (isAllowed && clean.size() < 127) clean += character;
  }
  return clean.empty() ? "Font" : clean;
}

class CffWriter {
 public:
  CffWriter(const SubsetRequest& request, const CffSource& source) : request_(request), source_(source) {}

  FontSubset write() {
    collectGlyphs();
    return request_.isComposite ? writeComposite() : writeSimple();
  }

 private:
  void collectGlyphs();
  void addNotdef();
  void addGlyph(GlyphIndex glyph);
  void addInOrder(GlyphIndex glyph);
  OutputGlyph outputGlyph(GlyphIndex glyph) const;
  std::string uniqueName(std::string name, std::size_t place);

  FontSubset writeSimple();
  FontSubset writeComposite();

  std::vector<std::string> charstrings();
  std::string simpleCharset();
  std::string compositeCharset() const;
  std::string encoding() const;
  std::string fontDictionarySelection() const;
  std::string privateDict(std::size_t fontDictionary) const;
  std::vector<double> fontBox() const;
  std::uint32_t stringNumber(std::string_view string);

  const SubsetRequest& request_;
  const CffSource& source_;
  FontSubset subset_;
  std::vector<OutputGlyph> glyphs_;
  std::vector<std::uint16_t> cids_;  // of all glyphs but the first
  std::unordered_set<std::string> namesInUse_;
  std::unordered_set<GlyphIndex> placed_;
  std::vector<std::string> strings_;
  std::map<std::size_t, double> defaultWidths_;
  // Of each glyph that is encoded, the codes.
  std::map<std::uint16_t, std::vector<std::uint8_t>> codes_;
};

// Glyphs with codes come first and in the codes' order, as an encoding wants them.
void CffWriter::collectGlyphs() {
  addNotdef();
  if (request_.isComposite) {
    for (const GlyphIndex glyph : request_.glyphs) addInOrder(glyph);
    cids_ = request_.cids;
    while (cids_.size() + 1 < glyphs_.size()) cids_.push_back(static_cast<std::uint16_t>(cids_.size() + 1));
    cids_.resize(glyphs_.size() - 1);
    return;
  }
  std::vector<SubsetRequest::Code> encoding = request_.encoding;
  std::ranges::stable_sort(encoding, {}, &SubsetRequest::Code::code);
  for (const SubsetRequest::Code& each : encoding) {
    addGlyph(each.glyph);
    if (const std::uint16_t place = subset_.indices[each.glyph]; place != 0)
      codes_[place].push_back(each.code);
  }
  for (const GlyphIndex glyph : request_.glyphs) addGlyph(glyph);
}

// When it is asked for it gets a place of its own besides: archives show no glyph of this name.
void CffWriter::addNotdef() {
  OutputGlyph notdef;
  if (source_.notdef) {
    try {
      notdef = outputGlyph(*source_.notdef);
      type2Charstring(notdef.program, 0, 0);
    } catch (const FontError&) {
      // A subset begins with .notdef, and an empty one does.
      notdef = {};
    }
  }
  notdef.name = ".notdef";
  namesInUse_.insert(notdef.name);
  glyphs_.push_back(std::move(notdef));
}

void CffWriter::addGlyph(GlyphIndex glyph) {
  if (subset_.indices.contains(glyph)) return;
  const std::size_t place = glyphs_.size();
  subset_.indices.emplace(glyph, std::uint16_t{0});
  if (place >= kMostGlyphs) return;
  try {
    OutputGlyph output = outputGlyph(glyph);
    // Whatever is too large for a charstring shows here already.
    type2Charstring(output.program, 0, 0);
    // Read as a blank, where nothing says better.
    const bool isNotdef = glyph == source_.notdef;
    output.name = uniqueName(isNotdef ? "space.notdef" : (source_.name ? source_.name(glyph) : ""), place);
    glyphs_.push_back(std::move(output));
    subset_.indices[glyph] = static_cast<std::uint16_t>(place);
  } catch (const FontError&) {
    // Shown as .notdef.
  }
}

// CIDs are places, and the caller counts on them: what cannot be read takes its place too, and .notdef gets
// one of its own when it is asked for.
void CffWriter::addInOrder(GlyphIndex glyph) {
  if (!placed_.insert(glyph).second || glyphs_.size() >= kMostGlyphs) return;
  subset_.indices.insert_or_assign(glyph, static_cast<std::uint16_t>(glyphs_.size()));
  OutputGlyph output;
  try {
    output = outputGlyph(glyph);
    type2Charstring(output.program, 0, 0);
  } catch (const FontError&) {
    output = {};
  }
  glyphs_.push_back(std::move(output));
}

// Moved into the usual thousandth of the em, where the file cannot say otherwise.
OutputGlyph CffWriter::outputGlyph(GlyphIndex glyph) const {
  OutputGlyph output;
  output.fontDictionary = source_.fontDictionary ? source_.fontDictionary(glyph) : 0;
  output.program = source_.program(glyph);
  const Matrix& matrix = source_.fontDictionaries.at(output.fontDictionary).matrix;
  if (!request_.isComposite || isUsual(matrix)) return output;
  const Matrix toUsual = matrix * Matrix::scaling(1000, 1000);
  output.program.advance = toUsual.applyToDistance(output.program.advance);
  for (Point& point : output.program.points) point = toUsual.apply(point);
  std::erase(output.program.kinds, GlyphProgram::Kind::kHints);
  output.program.hintGroups.clear();
  return output;
}

std::string CffWriter::uniqueName(std::string name, std::size_t place) {
  if (name.empty() || name.size() > 127) name = "g" + std::to_string(place);
  std::string unique = name;
  // A suffix does not change what a name means.
  for (int i = 1; !namesInUse_.insert(unique).second; ++i) unique = name + "." + std::to_string(i);
  return unique;
}

FontSubset CffWriter::writeSimple() {
  const std::string header("\x01\x00\x04\x04", 4);
  const std::string names = indexOf({cleanFontName(request_.fontName)});
  const std::string charset = simpleCharset();
  const std::string codes = encoding();
  const std::string glyphs = indexOf(charstrings());
  const std::string privates = privateDict(0);
  const std::string strings = indexOf(strings_) + indexOf({});  // no global subroutines

  const auto topDict = [&](std::size_t end) {
    CffDictWriter dict;
    const Matrix& matrix = source_.fontDictionaries.at(0).matrix;
    if (!isUsual(matrix)) {
      const double numbers[] = {matrix.a, matrix.b, matrix.c, matrix.d, matrix.tx, matrix.ty};
      dict.numbers(CffKey::kFontMatrix, numbers);
    }
    dict.numbers(CffKey::kFontBBox, fontBox());
    dict.places(CffKey::kCharset, {end});
    end += charset.size();
    if (!codes.empty()) dict.places(CffKey::kEncoding, {end});
    end += codes.size();
    dict.places(CffKey::kCharStrings, {end});
    end += glyphs.size();
    dict.places(CffKey::kPrivate, {privates.size(), end});
    return indexOf({dict.bytes()});
  };
  const std::size_t start = header.size() + names.size() + topDict(0).size() + strings.size();
  subset_.kind = FontFileKind::kType1C;
  subset_.bytes = header + names + topDict(start) + strings + charset + codes + glyphs + privates;
  for (OutputGlyph& glyph : glyphs_) subset_.names.push_back(std::move(glyph.name));
  return std::move(subset_);
}

FontSubset CffWriter::writeComposite() {
  const std::string header("\x01\x00\x04\x04", 4);
  const std::string names = indexOf({cleanFontName(request_.fontName)});
  const double registry = stringNumber("Adobe");
  const double ordering = stringNumber("Identity");
  const std::string strings = indexOf(strings_) + indexOf({});
  const std::string charset = compositeCharset();
  const std::string selection = fontDictionarySelection();
  const std::string glyphs = indexOf(charstrings());
  std::vector<std::string> privates;
  for (std::size_t i = 0; i < source_.fontDictionaries.size(); ++i) privates.push_back(privateDict(i));

  // The private dictionaries follow the array of those that name them.
  const auto fontArray = [&](std::size_t end) {
    std::vector<std::string> dicts;
    for (const std::string& each : privates) {
      dicts.push_back(CffDictWriter().places(CffKey::kPrivate, {each.size(), end}).bytes());
      end += each.size();
    }
    return indexOf(dicts);
  };
  const std::size_t arraySize = fontArray(0).size();
  const auto topDict = [&](std::size_t end) {
    CffDictWriter dict;
    const double ros[] = {registry, ordering, 0};
    dict.numbers(CffKey::kRos, ros);
    dict.numbers(CffKey::kFontBBox, fontBox());
    dict.number(CffKey::kCidCount, cids_.empty() ? 1 : cids_.back() + 1);
    dict.places(CffKey::kCharset, {end});
    end += charset.size();
    dict.places(CffKey::kFdSelect, {end});
    end += selection.size();
    dict.places(CffKey::kCharStrings, {end});
    end += glyphs.size();
    dict.places(CffKey::kFdArray, {end});
    return indexOf({dict.bytes()});
  };
  const std::size_t start = header.size() + names.size() + topDict(0).size() + strings.size();
  const std::size_t arrayStart = start + charset.size() + selection.size() + glyphs.size();
  subset_.kind = FontFileKind::kCidFontType0C;
  subset_.bytes = header + names + topDict(start) + strings + charset + selection + glyphs +
                  fontArray(arrayStart + arraySize);
  for (const std::string& each : privates) subset_.bytes += each;
  return std::move(subset_);
}

// The width that most glyphs of a font dictionary have need not be written with them.
std::vector<std::string> CffWriter::charstrings() {
  std::map<std::size_t, std::map<double, std::size_t>> widths;
  for (const OutputGlyph& glyph : glyphs_) ++widths[glyph.fontDictionary][glyph.program.advance.x];
  for (const auto& [fontDictionary, counts] : widths) {
    const auto most = std::ranges::max_element(counts, {}, [](const auto& each) { return each.second; });
    defaultWidths_[fontDictionary] = most->first;
  }
  std::vector<std::string> result;
  for (const OutputGlyph& glyph : glyphs_) {
    result.push_back(type2Charstring(glyph.program, defaultWidths_[glyph.fontDictionary], 0));
  }
  return result;
}

std::uint32_t CffWriter::stringNumber(std::string_view string) {
  if (const auto standard = cffStandardStringNumber(string)) return *standard;
  strings_.emplace_back(string);
  return static_cast<std::uint32_t>(kCffStandardStrings + strings_.size() - 1);
}

std::string CffWriter::simpleCharset() {
  std::string bytes;
  append8(bytes, 0);
  for (std::size_t i = 1; i < glyphs_.size(); ++i) append16(bytes, stringNumber(glyphs_[i].name));
  return bytes;
}

// Format 2: ranges of CIDs that follow each other, the first and how many more.
std::string CffWriter::compositeCharset() const {
  std::string bytes;
  append8(bytes, cids_.empty() ? 0 : 2);
  for (std::size_t first = 0; first < cids_.size();) {
    std::size_t end = first + 1;
    while (end < cids_.size() && cids_[end] == cids_[end - 1] + 1) ++end;
    append16(bytes, cids_[first]);
    append16(bytes, static_cast<std::uint32_t>(end - first - 1));
    first = end;
  }
  return bytes;
}

// Format 0: the first code of each glyph from 1 on; further codes as supplements, by the glyph's name.
std::string CffWriter::encoding() const {
  if (codes_.empty()) return {};
  std::string firsts;
  std::string supplements;
  std::size_t supplementCount = 0;
  for (const auto& [place, codes] : codes_) {
    append8(firsts, codes.front());
    for (std::size_t i = 1; i < codes.size(); ++i, ++supplementCount) {
      append8(supplements, codes[i]);
      const std::string& name = glyphs_[place].name;
      const auto standard = cffStandardStringNumber(name);
      const auto own = static_cast<std::size_t>(std::ranges::find(strings_, name) - strings_.begin());
      append16(supplements, standard ? *standard : static_cast<std::uint32_t>(kCffStandardStrings + own));
    }
  }
  std::string bytes;
  append8(bytes, supplementCount > 0 ? 0x80 : 0);
  append8(bytes, static_cast<std::uint32_t>(codes_.size()));
  bytes += firsts;
  if (supplementCount == 0) return bytes;
  append8(bytes, static_cast<std::uint32_t>(supplementCount));
  return bytes + supplements;
}

// Format 3: ranges of glyphs with the same font dictionary.
std::string CffWriter::fontDictionarySelection() const {
  std::string ranges;
  std::uint32_t count = 0;
  for (std::size_t i = 0; i < glyphs_.size(); ++i) {
    if (i > 0 && glyphs_[i].fontDictionary == glyphs_[i - 1].fontDictionary) continue;
    append16(ranges, static_cast<std::uint32_t>(i));
    append8(ranges, static_cast<std::uint32_t>(glyphs_[i].fontDictionary));
    ++count;
  }
  std::string bytes;
  append8(bytes, 3);
  append16(bytes, count);
  bytes += ranges;
  append16(bytes, static_cast<std::uint32_t>(glyphs_.size()));
  return bytes;
}

std::string CffWriter::privateDict(std::size_t fontDictionary) const {
  CffDictWriter dict;
  const auto width = defaultWidths_.find(fontDictionary);
  if (width != defaultWidths_.end() && width->second != 0) dict.number(CffKey::kDefaultWidthX, width->second);
  const CharstringPrivate* hints = source_.fontDictionaries[fontDictionary].privateData;
  const bool areMoved = request_.isComposite && !isUsual(source_.fontDictionaries[fontDictionary].matrix);
  if (hints == nullptr || areMoved) return dict.bytes();

  // Longer arrays than the format allows are wrong, and readers of the file may refuse it for them.
  const auto array = [&dict](CffKey key, const std::vector<double>& values, std::size_t most, bool arePairs) {
    const bool isRight = values.size() <= most && (!arePairs || values.size() % 2 == 0) &&
                         std::ranges::all_of(values, [](double value) { return std::abs(value) < 32768; });
    if (isRight) dict.differences(key, values);
  };
  const auto number = [&dict](CffKey key, double value, double usual) {
    if (value != usual && std::isfinite(value)) dict.number(key, value);
  };
  array(CffKey::kBlueValues, hints->blueValues, 14, true);
  array(CffKey::kOtherBlues, hints->otherBlues, 10, true);
  array(CffKey::kFamilyBlues, hints->familyBlues, 14, true);
  array(CffKey::kFamilyOtherBlues, hints->familyOtherBlues, 10, true);
  array(CffKey::kStdHW, hints->stdHW, 1, false);
  array(CffKey::kStdVW, hints->stdVW, 1, false);
  array(CffKey::kStemSnapH, hints->stemSnapH, 12, false);
  array(CffKey::kStemSnapV, hints->stemSnapV, 12, false);
  number(CffKey::kBlueScale, hints->blueScale, 0.039625);
  number(CffKey::kBlueShift, hints->blueShift, 7);
  number(CffKey::kBlueFuzz, hints->blueFuzz, 1);
  number(CffKey::kForceBold, hints->forceBold ? 1 : 0, 0);
  number(CffKey::kLanguageGroup, hints->languageGroup, 0);
  number(CffKey::kExpansionFactor, hints->expansionFactor, 0.06);
  return dict.bytes();
}

std::vector<double> CffWriter::fontBox() const {
  Box box;
  for (const OutputGlyph& glyph : glyphs_) {
    for (const Point point : glyph.program.points) box.include(point);
  }
  if (box.isEmpty()) return {0, 0, 0, 0};
  return {std::floor(box.left), std::floor(box.bottom), std::ceil(box.right), std::ceil(box.top)};
}

}  // namespace

FontSubset cffSubset(const SubsetRequest& request, const CffSource& source) {
  return CffWriter(request, source).write();
}

}  // namespace quillpress::level3
