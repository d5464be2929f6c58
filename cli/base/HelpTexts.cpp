#include "cli/base/HelpTexts.h"

namespace quillpress::cli {

const std::vector<ExitCodeHelp>& exitCodeHelp() {
  static const std::vector<ExitCodeHelp> codes{
      {0, "done"},
      {1, "error in the job (nothing is written)"},
      {2, "usage: the command line asks for something that cannot be"},
      {3, "input: the job cannot be read, or is not PostScript"},
      {4, "output: the PDF cannot be written"},
      {5, "done with warnings: the job is cut off, or something is not kept"},
      {6, "error in the job (the complete pages before it are written)"},
  };
  return codes;
}

const std::vector<ExampleHelp>& exampleHelp() {
  static const std::vector<ExampleHelp> examples{
      {"quillpress job.ps", "makes job.pdf"},
      {"quillpress *.ps -d out", "makes a PDF of each in the folder out"},
      {"quillpress job.ps -o 'page-%03d.pdf'", "makes a file of each page"},
      {"quillpress job.ps --pages 2-5,9 --title Report", "takes some pages, and names them"},
      {"quillpress --batch list -j 8 --report jobs.json", "converts many jobs, eight at a time"},
      {"program | quillpress - -o job.pdf", "converts what a program prints"},
  };
  return examples;
}

}  // namespace quillpress::cli
