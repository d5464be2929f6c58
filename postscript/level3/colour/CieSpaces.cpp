#include "postscript/level3/colour/CieSpaces.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <vector>

#include "postscript/level3/colour/IccProfile.h"
#include "postscript/level3/colour/Procedures.h"
#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

using Kind = ColourSpace::Kind;
using Range = std::pair<double, double>;

constexpr std::size_t kSamples = 256;

// A procedure of the space, sampled over a range; without one the identity.
class Curve {
 public:
  Curve() = default;
  Curve(Interpreter& interpreter, const Object& procedure, Range range) : range_(range) {
    if (procedure.length() == 0) return;
    samples_.resize(kSamples);
    for (std::size_t index = 0; index < kSamples; ++index) {
      const double input =
          range.first + (range.second - range.first) * static_cast<double>(index) / (kSamples - 1);
      evaluate(interpreter, procedure, {&input, 1}, {&samples_[index], 1});
    }
  }

  double at(double value) const {
    if (samples_.empty()) return value;
    const double width = range_.second - range_.first;
    const double place = width > 0 ? (value - range_.first) / width * (kSamples - 1) : 0;
    const double inside = std::clamp(place, 0.0, static_cast<double>(kSamples - 1));
    const auto index = std::min(static_cast<std::size_t>(inside), kSamples - 2);
    const double share = inside - static_cast<double>(index);
    return samples_[index] + (samples_[index + 1] - samples_[index]) * share;
  }

  bool isIdentity() const {
    for (std::size_t index = 0; index < samples_.size(); ++index) {
      const double input =
          range_.first + (range_.second - range_.first) * static_cast<double>(index) / (kSamples - 1);
      if (std::abs(samples_[index] - input) > 1e-5) return false;
    }
    return true;
  }

 private:
  std::vector<double> samples_;
  Range range_{0, 1};
};

double clampTo(double value, Range range) {
  return std::min(std::max(value, range.first), range.second);
}

// Reads a space's dictionary.
class Entries {
 public:
  Entries(Interpreter& interpreter, const Object& array) : interpreter_(interpreter) {
    if (array.length() < 2) raise(ErrorName::kRangeCheck);
    const Object& object = array.elements()[1];
    if (!object.isDictionary()) raise(ErrorName::kTypeCheck);
    dictionary_ = object.asDictionary();
    if (!dictionary_->isReadable()) raise(ErrorName::kInvalidAccess);
  }

  const Object* find(std::string_view key) { return dictionary_->find(interpreter_.memory().name(key)); }

  const Object& require(std::string_view key) {
    const Object* value = find(key);
    if (value == nullptr) raise(ErrorName::kUndefined);
    return *value;
  }

  // The numbers of an array, or the default when there is no such entry.
  std::vector<double> numbers(std::string_view key, std::vector<double> otherwise) {
    const Object* value = find(key);
    if (value == nullptr) return otherwise;
    return numbersOf(*value, otherwise.size());
  }

  static std::vector<double> numbersOf(const Object& array, std::size_t count) {
    if (!array.isArray()) raise(ErrorName::kTypeCheck);
    if (array.length() < count) raise(ErrorName::kRangeCheck);
    std::vector<double> numbers;
    for (std::size_t index = 0; index < count; ++index) {
      const Object& number = array.elements()[index];
      if (!number.isNumber()) raise(ErrorName::kTypeCheck);
      numbers.push_back(number.asNumber());
    }
    return numbers;
  }

  std::vector<Range> ranges(std::string_view key, std::size_t count) {
    std::vector<double> otherwise;
    for (std::size_t index = 0; index < count; ++index) otherwise.insert(otherwise.end(), {0, 1});
    const std::vector<double> bounds = numbers(key, otherwise);
    std::vector<Range> ranges;
    for (std::size_t index = 0; index < count; ++index) {
      if (bounds[2 * index] > bounds[2 * index + 1]) raise(ErrorName::kRangeCheck);
      ranges.emplace_back(bounds[2 * index], bounds[2 * index + 1]);
    }
    return ranges;
  }

  // An array of procedures, or a single one where there is one component.
  std::vector<Curve> curves(std::string_view key, const std::vector<Range>& ranges) {
    const Object* value = find(key);
    if (value == nullptr) return std::vector<Curve>(ranges.size());
    if (!value->isArray()) raise(ErrorName::kTypeCheck);
    std::vector<Curve> curves;
    for (std::size_t index = 0; index < ranges.size(); ++index) {
      const bool isAlone = ranges.size() == 1 && value->isExecutable();
      if (!isAlone && value->length() <= index) raise(ErrorName::kRangeCheck);
      const Object procedure = isAlone ? *value : value->elements()[index];
      if (!procedure.isProcedure()) raise(ErrorName::kTypeCheck);
      curves.emplace_back(interpreter_, procedure, ranges[index]);
    }
    return curves;
  }

 private:
  Interpreter& interpreter_;
  Dictionary* dictionary_;
};

// From three values to X, Y and Z: the stages that all spaces share.
struct Stages {
  std::vector<Range> rangeAbc;
  std::vector<Curve> decodeAbc;
  std::vector<double> matrixAbc;  // of CIEBasedA: three numbers
  std::vector<Range> rangeLmn;
  std::vector<Curve> decodeLmn;
  std::vector<double> matrixLmn;
  Xyz white{};

  static Xyz multiply(const std::vector<double>& matrix, const Xyz& v) {
    return {matrix[0] * v[0] + matrix[3] * v[1] + matrix[6] * v[2],
            matrix[1] * v[0] + matrix[4] * v[1] + matrix[7] * v[2],
            matrix[2] * v[0] + matrix[5] * v[1] + matrix[8] * v[2]};
  }

  Xyz fromLmn(Xyz lmn) const {
    for (std::size_t index = 0; index < 3; ++index) {
      lmn[index] = decodeLmn[index].at(clampTo(lmn[index], rangeLmn[index]));
    }
    return multiply(matrixLmn, lmn);
  }

  Xyz fromAbc(Xyz abc) const {
    for (std::size_t index = 0; index < 3; ++index) {
      abc[index] = decodeAbc[index].at(clampTo(abc[index], rangeAbc[index]));
    }
    return fromLmn(multiply(matrixAbc, abc));
  }

  Xyz fromA(double a) const {
    const double decoded = decodeAbc[0].at(clampTo(a, rangeAbc[0]));
    return fromLmn({matrixAbc[0] * decoded, matrixAbc[1] * decoded, matrixAbc[2] * decoded});
  }
};

Stages readStages(Entries& entries, bool isSingle) {
  Stages stages;
  stages.rangeAbc = isSingle ? entries.ranges("RangeA", 1) : entries.ranges("RangeABC", 3);
  stages.decodeAbc = entries.curves(isSingle ? "DecodeA" : "DecodeABC", stages.rangeAbc);
  stages.matrixAbc = isSingle ? entries.numbers("MatrixA", {1, 1, 1})
                              : entries.numbers("MatrixABC", {1, 0, 0, 0, 1, 0, 0, 0, 1});
  stages.rangeLmn = entries.ranges("RangeLMN", 3);
  stages.decodeLmn = entries.curves("DecodeLMN", stages.rangeLmn);
  stages.matrixLmn = entries.numbers("MatrixLMN", {1, 0, 0, 0, 1, 0, 0, 0, 1});
  const std::vector<double> white = Entries::numbersOf(entries.require("WhitePoint"), 3);
  if (!(white[0] > 0) || white[1] != 1 || !(white[2] > 0)) raise(ErrorName::kRangeCheck);
  std::copy(white.begin(), white.end(), stages.white.begin());
  return stages;
}

bool areIdentity(const std::vector<Curve>& curves) {
  return std::all_of(curves.begin(), curves.end(), [](const Curve& curve) { return curve.isIdentity(); });
}

// What stands for the space: a profile, or Lab.
struct Definition {
  std::string profile;
  std::string lab;
};

std::optional<std::string> asMatrixProfile(const Stages& stages) {
  const bool hasPlainAbc = stages.matrixAbc == std::vector<double>{1, 0, 0, 0, 1, 0, 0, 0, 1};
  if (!hasPlainAbc && !areIdentity(stages.decodeLmn)) return std::nullopt;
  std::array<std::vector<double>, 3> curves;
  std::array<Xyz, 3> colours;
  for (std::size_t channel = 0; channel < 3; ++channel) {
    const Range range = stages.rangeAbc[channel];
    for (std::size_t index = 0; index < 1024; ++index) {
      const double input = range.first + (range.second - range.first) * static_cast<double>(index) / 1023;
      double value = stages.decodeAbc[channel].at(input);
      if (hasPlainAbc) value = stages.decodeLmn[channel].at(clampTo(value, stages.rangeLmn[channel]));
      // A curve of a profile goes from 0 to 1.
      if (value < -1e-4 || value > 1 + 1e-4) return std::nullopt;
      curves[channel].push_back(value);
    }
    Xyz unit{};
    unit[channel] = 1;
    colours[channel] =
        Stages::multiply(stages.matrixLmn, hasPlainAbc ? unit : Stages::multiply(stages.matrixAbc, unit));
    if (colours[channel][1] < 0) return std::nullopt;
  }
  return matrixProfile(curves, colours, stages.white);
}

Xyz labToXyz(double lightness, double a, double b, const Xyz& white) {
  const auto decode = [](double value) {
    return value >= 6.0 / 29 ? value * value * value : 108.0 / 841 * (value - 4.0 / 29);
  };
  const double m = (lightness + 16) / 116;
  return {white[0] * decode(m + a / 500), white[1] * decode(m), white[2] * decode(m - b / 200)};
}

// Lab, when the space computes just that; found by trying.
std::optional<std::string> asLab(const Stages& stages) {
  if (stages.rangeAbc[0] != Range{0, 100}) return std::nullopt;
  for (const double lightness : {5.0, 30.0, 60.0, 95.0}) {
    for (const double a : {-40.0, 0.0, 50.0}) {
      for (const double b : {-50.0, 0.0, 40.0}) {
        const Xyz ours = stages.fromAbc({lightness, a, b});
        const Xyz lab = labToXyz(lightness, a, b, stages.white);
        for (std::size_t index = 0; index < 3; ++index) {
          if (std::abs(ours[index] - lab[index]) > 0.004) return std::nullopt;
        }
      }
    }
  }
  std::string text = "[/Lab<</WhitePoint[";
  for (std::size_t index = 0; index < 3; ++index) {
    if (index > 0) text += ' ';
    appendNumber(text, stages.white[index], 4);
  }
  text += "]/Range[";
  for (std::size_t index = 1; index < 3; ++index) {
    if (index > 1) text += ' ';
    appendNumber(text, stages.rangeAbc[index].first, 3);
    text += ' ';
    appendNumber(text, stages.rangeAbc[index].second, 3);
  }
  return text + "]>>]";
}

// A table with one more input stage in front, of CIEBasedDEF and DEFG.
class Table {
 public:
  Table(Entries& entries, std::size_t inputs) : inputs_(inputs) {
    const bool isFour = inputs == 4;
    ranges_ = entries.ranges(isFour ? "RangeDEFG" : "RangeDEF", inputs);
    decode_ = entries.curves(isFour ? "DecodeDEFG" : "DecodeDEF", ranges_);
    rangesInside_ = entries.ranges(isFour ? "RangeHIJK" : "RangeHIJ", inputs);
    rangeAbc_ = entries.ranges("RangeABC", 3);
    const Object& table = entries.require("Table");
    if (!table.isArray()) raise(ErrorName::kTypeCheck);
    if (table.length() != inputs + 1) raise(ErrorName::kRangeCheck);
    for (std::size_t index = 0; index < inputs; ++index) {
      const Object& size = table.elements()[index];
      if (!size.isInteger()) raise(ErrorName::kTypeCheck);
      if (size.asInteger() < 2 || size.asInteger() > 255) raise(ErrorName::kRangeCheck);
      sizes_.push_back(static_cast<std::size_t>(size.asInteger()));
    }
    gather(table.elements()[inputs], 0);
  }

  const std::vector<Range>& ranges() const { return ranges_; }

  // Channels from 0 to 1, to A, B and C, by linear interpolation in each direction.
  Xyz at(std::span<const double> channels) const {
    std::array<std::size_t, 4> cell{};
    std::array<double, 4> share{};
    for (std::size_t index = 0; index < inputs_; ++index) {
      const Range range = ranges_[index];
      const double value = decode_[index].at(range.first + (range.second - range.first) * channels[index]);
      const Range inside = rangesInside_[index];
      const double width = inside.second - inside.first;
      const double place = width > 0 ? (clampTo(value, inside) - inside.first) / width : 0;
      const double scaled = place * static_cast<double>(sizes_[index] - 1);
      cell[index] = std::min(static_cast<std::size_t>(scaled), sizes_[index] - 2);
      share[index] = scaled - static_cast<double>(cell[index]);
    }
    Xyz result{};
    for (std::size_t corner = 0; corner < (std::size_t{1} << inputs_); ++corner) {
      double weight = 1;
      std::size_t place = 0;
      for (std::size_t index = 0; index < inputs_; ++index) {
        const std::size_t upper = corner >> index & 1;
        weight *= upper != 0 ? share[index] : 1 - share[index];
        place = place * sizes_[index] + cell[index] + upper;
      }
      if (weight == 0) continue;
      for (std::size_t component = 0; component < 3; ++component) {
        const double level = static_cast<unsigned char>(samples_[place * 3 + component]) / 255.0;
        const Range range = rangeAbc_[component];
        result[component] += weight * (range.first + (range.second - range.first) * level);
      }
    }
    return result;
  }

 private:
  // The strings of a table stand at the depth of its last two inputs.
  void gather(const Object& object, std::size_t depth) {
    if (depth + 2 < inputs_) {
      if (!object.isArray()) raise(ErrorName::kTypeCheck);
      if (object.length() != sizes_[depth]) raise(ErrorName::kRangeCheck);
      if (depth + 3 == inputs_) {
        for (const Object& part : elementsOf(object)) gatherString(part);
      } else {
        for (const Object& part : elementsOf(object)) gather(part, depth + 1);
      }
      return;
    }
    gatherString(object);
  }

  void gatherString(const Object& object) {
    if (!object.isString()) raise(ErrorName::kTypeCheck);
    if (object.length() != 3 * sizes_[inputs_ - 2] * sizes_[inputs_ - 1]) raise(ErrorName::kRangeCheck);
    samples_ += textOf(object);
  }

  std::size_t inputs_;
  std::vector<Range> ranges_;
  std::vector<Curve> decode_;
  std::vector<Range> rangesInside_;
  std::vector<Range> rangeAbc_;
  std::vector<std::size_t> sizes_;
  std::string samples_;
};

Definition defineSingle(const Stages& stages) {
  std::vector<double> luminance;
  const Range range = stages.rangeAbc[0];
  bool isNeutral = true;
  for (std::size_t index = 0; index < kSamples; ++index) {
    const double share = static_cast<double>(index) / (kSamples - 1);
    const Xyz colour = stages.fromA(range.first + (range.second - range.first) * share);
    luminance.push_back(colour[1]);
    isNeutral = isNeutral && std::abs(colour[0] - colour[1] * stages.white[0]) < 0.005 &&
                std::abs(colour[2] - colour[1] * stages.white[2]) < 0.005;
  }
  if (isNeutral) return {grayProfile(luminance), ""};
  return {sampledProfile(1, stages.white,
                         [&](std::span<const double> channels) {
                           return stages.fromA(range.first + (range.second - range.first) * channels[0]);
                         }),
          ""};
}

Definition defineTriple(const Stages& stages) {
  if (const auto lab = asLab(stages)) return {"", *lab};
  if (auto profile = asMatrixProfile(stages)) return {std::move(*profile), ""};
  return {sampledProfile(3, stages.white,
                         [&](std::span<const double> channels) {
                           Xyz abc;
                           for (std::size_t index = 0; index < 3; ++index) {
                             const Range range = stages.rangeAbc[index];
                             abc[index] = range.first + (range.second - range.first) * channels[index];
                           }
                           return stages.fromAbc(abc);
                         }),
          ""};
}

class CieSpace final : public NamedColourSpace {
 public:
  CieSpace(Kind kind, const Object& array, std::vector<Range> ranges, Definition definition)
      : NamedColourSpace(kind, ranges.size(), array),
        ranges_(std::move(ranges)),
        definition_(std::move(definition)) {}

  std::pair<double, double> range(std::size_t index) const override { return ranges_[index]; }

  // Zero, or what is nearest to it.
  Components initialColour() const override {
    Components colour{};
    clamp({colour.data(), componentCount()});
    return colour;
  }

  double pdfComponent(std::size_t index, double value) const override {
    if (!definition_.lab.empty()) return value;
    const auto [least, greatest] = ranges_[index];
    return greatest > least ? (value - least) / (greatest - least) : 0;
  }

 protected:
  std::string definition(PdfFile& file) const override {
    if (!definition_.lab.empty()) return definition_.lab;
    DictionaryText entries;
    entries.integer("N", static_cast<std::int64_t>(componentCount()));
    constexpr std::array<std::string_view, 4> kAlternates{"DeviceGray", "", "DeviceRGB", "DeviceCMYK"};
    entries.name("Alternate", kAlternates[componentCount() - 1]);
    std::string text = "[/ICCBased ";
    appendReference(text, file.addSharedStream(entries.entries(), definition_.profile, StreamData::kDeflate));
    return text + "]";
  }

 private:
  std::vector<Range> ranges_;
  Definition definition_;
};

ColourSpacePointer readTable(Interpreter& interpreter, const Object& array, std::size_t inputs) {
  Entries entries(interpreter, array);
  const Table table(entries, inputs);
  const Stages stages = readStages(entries, false);
  Definition definition{
      sampledProfile(inputs, stages.white,
                     [&](std::span<const double> channels) { return stages.fromAbc(table.at(channels)); }),
      ""};
  return std::make_shared<CieSpace>(inputs == 3 ? Kind::kCieBasedDef : Kind::kCieBasedDefg, array,
                                    table.ranges(), std::move(definition));
}

}  // namespace

ColourSpacePointer readCieSpace(Interpreter& interpreter, const Object& array) {
  const std::string_view family = array.elements()[0].asName()->text();
  if (family == "CIEBasedDEF") return readTable(interpreter, array, 3);
  if (family == "CIEBasedDEFG") return readTable(interpreter, array, 4);
  if (family != "CIEBasedA" && family != "CIEBasedABC") raise(ErrorName::kUndefined);
  const bool isSingle = family == "CIEBasedA";
  Entries entries(interpreter, array);
  const Stages stages = readStages(entries, isSingle);
  Definition definition = isSingle ? defineSingle(stages) : defineTriple(stages);
  return std::make_shared<CieSpace>(isSingle ? Kind::kCieBasedA : Kind::kCieBasedAbc, array, stages.rangeAbc,
                                    std::move(definition));
}

}  // namespace quillpress::level3
