#include "cli/manual/ManualPage.h"

#include "cli/base/HelpTexts.h"
#include "cli/manual/OptionTable.h"

namespace quillpress::cli {

namespace {

// Text for man: a dash that can be copied, no escape by chance, and no line that looks like a request.
std::string roff(std::string_view text) {
  std::string result;
  if (text.starts_with('.') || text.starts_with('\'')) result = "\\&";
  for (const char character : text) {
    if (character == '-') {
      result += "\\-";
    } else if (character == '\\') {
      result += "\\e";
    } else {
      result += character;
    }
  }
  return result;
}

std::string optionText(const OptionRow& option) {
  std::string names = option.longName;
  if (!option.shortName.empty()) names = option.shortName + ", " + names;
  std::string text = ".TP\n.B " + roff(names);
  if (!option.values.empty()) text += " \\fI" + roff(option.values) + "\\fR";
  return text + "\n" + roff(option.help) + ".\n";
}

constexpr std::string_view kDescription =
    "converts PostScript jobs of any program, LanguageLevel 3, to PDF. Fonts are embedded, text can be "
    "searched. "
    "The PDF appears beside its job, whole or not at all. A job reads and writes no file unless it is "
    "allowed to.";

constexpr std::string_view kMessages =
    "Messages go to standard error, a line each. An error in a job is told with its PostScript name first, "
    "then what "
    "it came up in, the page that was not complete, and the byte of the job that had been reached, counted "
    "from 0.";

}  // namespace

std::string manualPage() {
  std::string page = ".TH QUILLPRESS 1 \"\" \"Quillpress " QUILLPRESS_VERSION
                     "\" \"User Commands\"\n.SH NAME\nquillpress \\- convert PostScript to PDF\n"
                     ".SH SYNOPSIS\n.B quillpress\n[\\fIOPTION\\fR]... \\fIJOB\\fR...\n.SH DESCRIPTION\n"
                     ".B quillpress\n";
  page += roff(kDescription) + "\n.PP\n" + roff(kMessages) + "\n.SH OPTIONS\n";
  for (const OptionRow& option : optionTable()) page += optionText(option);
  page += ".SH EXIT STATUS\n";
  for (const ExitCodeHelp& help : exitCodeHelp()) {
    page += ".TP\n.B " + std::to_string(help.code) + "\n" + roff(help.meaning) + "\n";
  }
  page += ".PP\n" + roff(kSeveralCodes) + "\n.SH ENVIRONMENT\n.TP\n.B SOURCE_DATE_EPOCH\n" +
          roff("The creation date of the PDF, in seconds since 1970, when the job has none.") +
          "\n.TP\n.B TMPDIR\n" + roff("Folder for temporary files when the PDF goes to standard output.") +
          "\n.SH EXAMPLES\n";
  for (const ExampleHelp& example : exampleHelp()) {
    page += ".TP\n.B " + roff(example.command) + "\n" + roff(example.meaning) + ".\n";
  }
  return page;
}

}  // namespace quillpress::cli
