#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace quillpress::fuzz {

using Input = std::span<const std::uint8_t>;

// Something that takes any bytes. What must hold is checked with FUZZ_CHECK; the rest the sanitizers find.
struct Target {
  std::string_view name;  // of its corpus, and of its source in another spelling
  void (*run)(Input input);
};

// Null when there is none of that name.
const Target* findTarget(std::string_view name);

void runCalls(Input input);
void runCffFonts(Input input);
void runCharstrings(Input input);
void runCidFonts(Input input);
void runConvert(Input input);
void runFilters(Input input);
void runImages(Input input);
void runIni(Input input);
void runJobs(Input input);
void runNumbers(Input input);
void runOutputNames(Input input);
void runPrograms(Input input);
void runRegistry(Input input);
void runScanner(Input input);
void runSplits(Input input);
void runTokenizer(Input input);
void runTrueTypeFonts(Input input);
void runType1Files(Input input);
void runXmp(Input input);

}  // namespace quillpress::fuzz
