#pragma once

#include <limits>

#include "postscript/level3/interpreter/Interpreter.h"
#include "postscript/level3/streams/CcittFilter.h"
#include "postscript/level3/streams/DctFilter.h"
#include "postscript/level3/streams/LzwFilter.h"
#include "postscript/level3/streams/PredictorFilter.h"

namespace quillpress::level3 {

// The parameter dictionary of a filter, perhaps none. Values of the wrong type throw typecheck, values out of
// their range rangecheck.
class FilterParameters {
 public:
  static constexpr int kHighest = std::numeric_limits<int>::max();

  // `ownsData`: nobody else knows the source or target, a string or procedure, so it is closed in any case.
  FilterParameters(Interpreter& interpreter, const Dictionary* dictionary, bool ownsData)
      : interpreter_(interpreter), dictionary_(dictionary), ownsData_(ownsData) {}

  [[nodiscard]] const Object* find(std::string_view key) const;
  // Without a default: a parameter that must be there. Throws rangecheck when it is not.
  [[nodiscard]] int integer(std::string_view key, std::optional<int> whenMissing, int lowest,
                            int highest = kHighest) const;
  [[nodiscard]] double number(std::string_view key, double whenMissing) const;
  [[nodiscard]] bool boolean(std::string_view key, bool whenMissing) const;

  // `key` is CloseSource or CloseTarget.
  [[nodiscard]] FilterClosing closing(std::string_view key) const;
  [[nodiscard]] PredictorParameters predictor() const;
  [[nodiscard]] LzwParameters lzw() const;
  [[nodiscard]] CcittParameters ccitt() const;
  [[nodiscard]] DctParameters dct() const;
  // ColorTransform: nothing when it is not given.
  [[nodiscard]] std::optional<bool> colorTransform() const;

  [[nodiscard]] Interpreter& interpreter() const { return interpreter_; }

 private:
  // The elements of an array of integers, or the bytes of a string; `size` of them, or as many as there are.
  [[nodiscard]] static std::vector<int> integersOf(const Object& value, std::optional<std::size_t> size);
  void readTables(DctParameters& parameters) const;

  Interpreter& interpreter_;
  const Dictionary* dictionary_;
  bool ownsData_;
};

}  // namespace quillpress::level3
