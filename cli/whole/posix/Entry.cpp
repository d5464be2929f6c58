#include "cli/whole/Entry.h"

#include "cli/Command.h"
#include "cli/Program.h"

extern "C" __attribute__((visibility("default"))) int quillpressRunWholeProgram(int argc,
                                                                                const char* const* argv) {
  return quillpress::cli::runCommand(argc, argv, quillpress::cli::runProgram);
}
