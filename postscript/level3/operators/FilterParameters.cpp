#include "postscript/level3/operators/FilterParameters.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace quillpress::level3 {

const Object* FilterParameters::find(std::string_view key) const {
  Name* const name = interpreter_.memory().names().find(key);
  return dictionary_ == nullptr || name == nullptr ? nullptr : dictionary_->find(name);
}

int FilterParameters::integer(std::string_view key, std::optional<int> whenMissing, int lowest,
                              int highest) const {
  const Object* const value = find(key);
  if (value == nullptr) {
    if (!whenMissing) raise(ErrorName::kRangeCheck);
    return *whenMissing;
  }
  if (!value->isNumber()) raise(ErrorName::kTypeCheck);
  const double number = value->asNumber();
  if (number != std::floor(number)) raise(ErrorName::kTypeCheck);
  if (number < lowest || number > highest) raise(ErrorName::kRangeCheck);
  return static_cast<int>(number);
}

double FilterParameters::number(std::string_view key, double whenMissing) const {
  const Object* const value = find(key);
  if (value == nullptr) return whenMissing;
  if (!value->isNumber()) raise(ErrorName::kTypeCheck);
  return value->asNumber();
}

bool FilterParameters::boolean(std::string_view key, bool whenMissing) const {
  const Object* const value = find(key);
  if (value == nullptr) return whenMissing;
  if (!value->is(Type::kBoolean)) raise(ErrorName::kTypeCheck);
  return value->asBoolean();
}

FilterClosing FilterParameters::closing(std::string_view key) const {
  return boolean(key, false) || ownsData_ ? FilterClosing::kSourceOrTargetToo : FilterClosing::kFilterOnly;
}

// The parameters beside Predictor count only when there is one.
PredictorParameters FilterParameters::predictor() const {
  PredictorParameters parameters;
  parameters.predictor = integer("Predictor", 1, 1, 15);
  if (parameters.predictor == 1) return parameters;
  if (parameters.predictor > 2 && parameters.predictor < 10) raise(ErrorName::kRangeCheck);
  parameters.colors = integer("Colors", 1, 1, 60);
  parameters.bitsPerComponent = integer("BitsPerComponent", 8, 1, 16);
  parameters.columns = integer("Columns", 1, 1);
  const int bits = parameters.bitsPerComponent;
  if ((bits & (bits - 1)) != 0) raise(ErrorName::kRangeCheck);
  return parameters;
}

LzwParameters FilterParameters::lzw() const {
  LzwParameters parameters;
  parameters.earlyChange = integer("EarlyChange", 1, 0, 1) == 1;
  parameters.unitLength = integer("UnitLength", 8, 3, 8);
  parameters.lowBitFirst = boolean("LowBitFirst", false);
  return parameters;
}

CcittParameters FilterParameters::ccitt() const {
  CcittParameters parameters;
  parameters.k = integer("K", 0, -kHighest);
  parameters.endOfLine = boolean("EndOfLine", false);
  parameters.encodedByteAlign = boolean("EncodedByteAlign", false);
  parameters.columns = integer("Columns", 1728, 1, CcittParameters::kMostColumns);
  parameters.rows = integer("Rows", 0, 0);
  parameters.endOfBlock = boolean("EndOfBlock", true);
  parameters.blackIs1 = boolean("BlackIs1", false);
  parameters.damagedRowsBeforeError = integer("DamagedRowsBeforeError", 0, 0);
  // Decoding finds it in the data, and encoding need not use it.
  static_cast<void>(boolean("Uncompressed", false));
  return parameters;
}

std::optional<bool> FilterParameters::colorTransform() const {
  if (find("ColorTransform") == nullptr) return std::nullopt;
  return integer("ColorTransform", 0, 0, 2) != 0;
}

DctParameters FilterParameters::dct() const {
  constexpr int kMostPixels = 65535;
  DctParameters parameters;
  parameters.columns = integer("Columns", std::nullopt, 1, kMostPixels);
  parameters.rows = integer("Rows", std::nullopt, 1, kMostPixels);
  parameters.colors = integer("Colors", std::nullopt, 1, DctParameters::kMaxColors);
  parameters.colorTransform = colorTransform();
  parameters.qFactor = number("QFactor", 1.0);
  if (parameters.qFactor < 0) raise(ErrorName::kRangeCheck);
  readTables(parameters);
  return parameters;
}

void FilterParameters::readTables(DctParameters& parameters) const {
  const auto colors = static_cast<std::size_t>(parameters.colors);
  const auto readSamples = [&](std::string_view key, std::array<int, DctParameters::kMaxColors>& samples) {
    const Object* const value = find(key);
    if (value == nullptr) return;
    const std::vector<int> given = integersOf(*value, colors);
    for (const int sample : given) {
      if (sample < 1 || sample > 4) raise(ErrorName::kRangeCheck);
    }
    std::copy(given.begin(), given.end(), samples.begin());
  };
  readSamples("HSamples", parameters.horizontalSamples);
  readSamples("VSamples", parameters.verticalSamples);

  const auto tables = [&](std::string_view key, std::size_t count) -> std::span<const Object> {
    const Object* const value = find(key);
    if (value == nullptr) return {};
    if (!value->isArray()) raise(ErrorName::kTypeCheck);
    if (value->length() != count) raise(ErrorName::kRangeCheck);
    return elementsOf(*value);
  };
  for (const Object& value : tables("QuantTables", colors)) {
    const std::vector<int> given = integersOf(value, DctParameters::QuantTable{}.size());
    std::copy(given.begin(), given.end(), parameters.quantTables.emplace_back().begin());
  }
  for (const Object& value : tables("HuffTables", 2 * colors)) {
    const std::vector<int> given = integersOf(value, std::nullopt);
    DctParameters::HuffTable& table = parameters.huffTables.emplace_back();
    if (given.size() < table.counts.size()) raise(ErrorName::kRangeCheck);
    const auto values = given.begin() + static_cast<std::ptrdiff_t>(table.counts.size());
    std::transform(given.begin(), values, table.counts.begin(), [](int n) { return static_cast<Byte>(n); });
    std::transform(values, given.end(), std::back_inserter(table.values),
                   [](int n) { return static_cast<Byte>(n); });
  }
}

std::vector<int> FilterParameters::integersOf(const Object& value, std::optional<std::size_t> size) {
  if (!value.isArray() && !value.isString()) raise(ErrorName::kTypeCheck);
  if (size && value.length() != *size) raise(ErrorName::kRangeCheck);
  std::vector<int> integers;
  for (std::uint32_t i = 0; i < value.length(); ++i) {
    if (value.isString()) {
      integers.push_back(value.bytes()[i]);
      continue;
    }
    const Object& element = value.elements()[i];
    if (!element.isNumber()) raise(ErrorName::kTypeCheck);
    const double number = element.asNumber();
    if (number < 0 || number > 65535) raise(ErrorName::kRangeCheck);
    integers.push_back(static_cast<int>(number));
  }
  return integers;
}

}  // namespace quillpress::level3
