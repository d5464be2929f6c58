// Numbers as content text writes them, against what printf writes.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "postscript/lib/pdf/NumberFormat.h"
#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Choices.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

namespace {

int decimalsOf(double magnitude) {
  if (magnitude >= 10000) return 0;
  if (magnitude >= 1000) return 1;
  if (magnitude >= 10) return 3;
  return magnitude >= 1 ? 4 : 5;
}

std::string printed(double value) {
  if (!std::isfinite(value)) return "0";
  const int decimals = decimalsOf(std::fabs(value));
  char buffer[400];
  std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
  std::string text = buffer;
  if (decimals > 0) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

void check(double value) {
  std::string text = "kept ";
  appendNumber(text, value);
  FUZZ_CHECK_EQUAL(text, "kept " + printed(value));
}

}  // namespace

// A number of eight bytes, and those around what a decimal text says: ties and changes of the magnitude lie
// there.
void runNumbers(Input input) {
  Choices choices(input);
  check(choices.number<double>());
  const double value = std::strtod(choices.bytes(40).c_str(), nullptr);
  for (const double sign : {1.0, -1.0}) {
    check(sign * value);
    check(std::nextafter(sign * value, HUGE_VAL));
    check(std::nextafter(sign * value, -HUGE_VAL));
  }
}

}  // namespace quillpress::fuzz
