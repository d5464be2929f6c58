#pragma once

#include <array>

namespace quillpress::cli {

// What the process returns. The numbers are a contract with scripts that call the program.
enum class ExitCode {
  kDone = 0,
  kConversion =
      1,  // the job has an error, and nothing is written; in the driver's dialect its complete pages are
  kUsage = 2,
  kInput = 3,    // the job cannot be read or is not PostScript
  kOutput = 4,   // the result cannot be written
  kCutOff = 5,   // done with warnings: the job ends before it is complete, or something of it is not kept
  kPartial = 6,  // the full language: the job has an error; the complete pages were written
};

// Of several jobs, the code that counts: the one of the two whose reason is to be looked at first.
constexpr ExitCode graver(ExitCode one, ExitCode other) {
  constexpr std::array kFromTheGravest{ExitCode::kOutput,     ExitCode::kUsage,   ExitCode::kInput,
                                       ExitCode::kConversion, ExitCode::kPartial, ExitCode::kCutOff};
  for (const ExitCode code : kFromTheGravest) {
    if (one == code || other == code) return code;
  }
  return ExitCode::kDone;
}

}  // namespace quillpress::cli
