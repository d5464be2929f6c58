#include "tests/fuzz/support/Target.h"

#include <algorithm>
#include <array>

namespace quillpress::fuzz {

namespace {

constexpr auto kTargets = std::to_array<Target>({
    {"calls", runCalls},
    {"cff_fonts", runCffFonts},
    {"charstrings", runCharstrings},
    {"cid_fonts", runCidFonts},
    {"convert", runConvert},
    {"filters", runFilters},
    {"images", runImages},
    {"ini", runIni},
    {"jobs", runJobs},
    {"numbers", runNumbers},
    {"output_names", runOutputNames},
    {"programs", runPrograms},
    {"registry", runRegistry},
    {"scanner", runScanner},
    {"splits", runSplits},
    {"tokenizer", runTokenizer},
    {"truetype_fonts", runTrueTypeFonts},
    {"type1_files", runType1Files},
    {"xmp", runXmp},
});

}  // namespace

const Target* findTarget(std::string_view name) {
  const auto* found = std::ranges::find(kTargets, name, &Target::name);
  return found == kTargets.end() ? nullptr : found;
}

}  // namespace quillpress::fuzz
