#pragma once

#include <cstdint>
#include <optional>

#include "cli/conversion/Converter.h"

namespace quillpress::cli {

// Counts how often a job shows text, which the converter takes and does not draw. It offers no such number,
// and the job's text does not tell it, since drivers show text through procedures of their own. So a little
// PostScript runs before the job and stands in for each operator that shows text: it counts and goes on to
// the operator. What a job can see of that is the type of such an operator (a name) and nothing else.
class TextCounter {
 public:
  // Puts the stand-ins into a converter that has not begun its job.
  static void install(Converter& converter);

  // How often text was shown. Nothing when the converter does not listen, being in the middle of something
  // that its job left open. REQUIRES: the content of the present page is complete, as the answer comes by
  // way of the graphics state.
  static std::optional<std::uint64_t> read(Converter& converter);
};

}  // namespace quillpress::cli
