#include "cli/Command.h"
#include "cli/Program.h"

int main(int argc, char** argv) {
  return quillpress::cli::runCommand(argc, argv, quillpress::cli::runProgram);
}
