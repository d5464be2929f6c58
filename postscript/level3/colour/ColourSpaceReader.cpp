#include "postscript/level3/colour/ColourSpaceReader.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

#include "postscript/level3/colour/CieSpaces.h"
#include "postscript/level3/colour/Procedures.h"
#include "postscript/level3/colour/SpecialSpaces.h"

namespace quillpress::level3 {

namespace {

using Kind = ColourSpace::Kind;

constexpr int kMostIndexedColours = 4095;
// Indexed on Separation on CIEBased is as deep as the language goes.
constexpr int kDeepestBaseSpace = 4;

// Procedures of the job run while it reads, so it keeps what it has read so far.
class Reader final : public Roots {
 public:
  explicit Reader(Interpreter& interpreter)
      : interpreter_(interpreter), scope_(interpreter.memory(), *this) {}

  void trace(Tracer& tracer) const override {
    for (const Object& array : arrays_) tracer.visit(array);
    for (const ColourSpacePointer& space : spaces_) space->trace(tracer);
  }

  ColourSpacePointer read(const Object& description, int depth) {
    if (depth > kDeepestBaseSpace) raise(ErrorName::kRangeCheck);
    const Object array = asArray(description);
    arrays_.push_back(array);
    if (array.length() == 0) raise(ErrorName::kRangeCheck);
    const Object& family = array.elements()[0];
    if (!family.isName()) raise(ErrorName::kTypeCheck);
    const std::string_view name = family.asName()->text();
    if (name == "DeviceGray") return deviceSpace(Kind::kDeviceGray, array);
    if (name == "DeviceRGB") return deviceSpace(Kind::kDeviceRgb, array);
    if (name == "DeviceCMYK") return deviceSpace(Kind::kDeviceCmyk, array);
    if (name == "Pattern") return readPattern(array, depth);
    if (name == "Indexed") return readIndexed(array, depth);
    if (name == "Separation") return readSeparation(array, depth);
    if (name == "DeviceN") return readDeviceN(array, depth);
    if (name.starts_with("CIEBased")) return readCieSpace(interpreter_, array);
    raise(ErrorName::kUndefined);
  }

 private:
  // A name alone stands for an array of one.
  Object asArray(const Object& description) {
    if (description.isName()) {
      const Object element = description.asLiteral();
      return interpreter_.memory().newArray(std::span(&element, 1));
    }
    if (!description.isArray()) raise(ErrorName::kTypeCheck);
    if (!description.isReadable()) raise(ErrorName::kInvalidAccess);
    return description;
  }

  const Object& element(const Object& array, std::uint32_t index) {
    if (index >= array.length()) raise(ErrorName::kRangeCheck);
    return array.elements()[index];
  }

  ColourSpacePointer readPattern(const Object& array, int depth) {
    if (array.length() == 1) return std::make_shared<PatternSpace>(array, nullptr);
    ColourSpacePointer base = read(element(array, 1), depth + 1);
    if (base->kind() == Kind::kPattern) raise(ErrorName::kRangeCheck);
    return std::make_shared<PatternSpace>(array, std::move(base));
  }

  ColourSpacePointer readIndexed(const Object& array, int depth) {
    ColourSpacePointer base = read(element(array, 1), depth + 1);
    if (base->kind() == Kind::kPattern || base->kind() == Kind::kIndexed) raise(ErrorName::kTypeCheck);
    const Object& highest = element(array, 2);
    if (!highest.isInteger()) raise(ErrorName::kTypeCheck);
    if (highest.asInteger() < 0 || highest.asInteger() > kMostIndexedColours) raise(ErrorName::kRangeCheck);
    const int count = static_cast<int>(highest.asInteger());
    const Object lookup = element(array, 3);
    spaces_.push_back(base);
    std::string table;
    if (lookup.isString()) {
      table = stringTable(lookup, *base, count);
    } else if (lookup.isProcedure()) {
      table = procedureTable(lookup, *base, count);
    } else {
      raise(ErrorName::kTypeCheck);
    }
    return std::make_shared<IndexedSpace>(array, std::move(base), count, std::move(table));
  }

  static std::string stringTable(const Object& lookup, const ColourSpace& base, int highest) {
    const std::size_t needed = base.componentCount() * static_cast<std::size_t>(highest + 1);
    if (lookup.length() < needed) raise(ErrorName::kRangeCheck);
    return std::string(textOf(lookup).substr(0, needed));
  }

  std::string procedureTable(const Object& lookup, const ColourSpace& base, int highest) {
    std::string table;
    std::vector<double> colour(base.componentCount());
    for (int index = 0; index <= highest; ++index) {
      // An integer, as the procedure may use it to count.
      const Object input = Object::integer(index);
      evaluate(interpreter_, lookup, std::span(&input, 1), colour);
      for (std::size_t component = 0; component < colour.size(); ++component) {
        const auto [least, greatest] = base.range(component);
        const double share = greatest > least ? (colour[component] - least) / (greatest - least) : 0;
        table += static_cast<char>(std::lround(std::clamp(share, 0.0, 1.0) * 255));
      }
    }
    return table;
  }

  static std::string inkName(const Object& name) {
    if (name.isName()) return std::string(name.asName()->text());
    if (name.isString()) return std::string(textOf(name));
    raise(ErrorName::kTypeCheck);
  }

  ColourSpacePointer readAlternative(const Object& array, int depth) {
    ColourSpacePointer alternative = read(element(array, 2), depth + 1);
    if (alternative->kind() == Kind::kPattern) raise(ErrorName::kTypeCheck);
    if (alternative->kind() >= Kind::kIndexed) raise(ErrorName::kRangeCheck);
    return alternative;
  }

  ColourSpacePointer readSeparation(const Object& array, int depth) {
    return inkSpace(Kind::kSeparation, array, {inkName(element(array, 1))}, depth);
  }

  ColourSpacePointer readDeviceN(const Object& array, int depth) {
    const Object& list = element(array, 1);
    if (!list.isArray()) raise(ErrorName::kTypeCheck);
    if (list.length() == 0) raise(ErrorName::kTypeCheck);
    if (list.length() > Paint::kMostComponents) raise(ErrorName::kLimitCheck);
    std::vector<std::string> names;
    for (const Object& name : elementsOf(list)) names.push_back(inkName(name));
    return inkSpace(Kind::kDeviceN, array, std::move(names), depth);
  }

  ColourSpacePointer inkSpace(Kind kind, const Object& array, std::vector<std::string> names, int depth) {
    ColourSpacePointer alternative = readAlternative(array, depth);
    const Object procedure = element(array, 3);
    spaces_.push_back(alternative);
    if (!procedure.isProcedure()) raise(ErrorName::kTypeCheck);
    std::string function = tintFunction(interpreter_, procedure, names.size(), *alternative);
    return std::make_shared<InkSpace>(kind, array, std::move(names), std::move(alternative),
                                      std::move(function));
  }

  Interpreter& interpreter_;
  std::vector<Object> arrays_;
  std::vector<ColourSpacePointer> spaces_;
  RootsScope scope_;
};

}  // namespace

ColourSpacePointer readColourSpace(Interpreter& interpreter, const Object& description) {
  return Reader(interpreter).read(description, 0);
}

}  // namespace quillpress::level3
