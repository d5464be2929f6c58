#pragma once

namespace quillpress::cli {

/** What the process returns. The numbers are a contract with scripts that call the program. */
enum class ExitCode {
  Done = 0,
  Conversion = 1,  // the job has an error; the pages without one were written
  Usage = 2,
  Input = 3,   // the job cannot be read or is not PostScript
  Output = 4,  // the result cannot be written
};

}  // namespace quillpress::cli
