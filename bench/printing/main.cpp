// What the print driver side costs, each figure beside that of the bare calls of Windows that do the least a
// job needs.
//   quillpress_printing [ROUNDS [MEGABYTES]]

#include <cstdlib>

#include "bench/printing/Benchmarks.h"
#include "bench/printing/Printer.h"

int main(int count, char** arguments) {
  const int rounds = count > 1 ? std::atoi(arguments[1]) : 5;
  const int megabytes = count > 2 ? std::atoi(arguments[2]) : 500;
  if (rounds < 1 || megabytes < 1) return EXIT_FAILURE;

  Printer printer;
  measureStart(printer, rounds);
  measureGetters(printer, rounds);
  measureWriting(printer, rounds, static_cast<unsigned>(megabytes));
  return EXIT_SUCCESS;
}
