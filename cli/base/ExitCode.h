#pragma once

namespace quillpress::cli {

// What the process returns. The numbers are a contract with scripts that call the program.
enum class ExitCode {
  kDone = 0,
  kConversion = 1,  // the job has an error; the pages without one were written
  kUsage = 2,
  kInput = 3,    // the job cannot be read or is not PostScript
  kOutput = 4,   // the result cannot be written
  kCutOff = 5,   // the job ends before it is complete; what there was of it was written
  kPartial = 6,  // the full language: the job has an error; the complete pages were written
};

}  // namespace quillpress::cli
