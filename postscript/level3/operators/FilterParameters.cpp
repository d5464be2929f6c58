#include "postscript/level3/operators/FilterParameters.h"

#include <cmath>

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
  return boolean(key, false) ? FilterClosing::kSourceOrTargetToo : FilterClosing::kFilterOnly;
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

}  // namespace quillpress::level3
