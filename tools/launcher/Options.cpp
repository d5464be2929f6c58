#include "tools/launcher/Options.h"

#include <algorithm>
#include <string_view>

namespace quillpress::launcher {
namespace {

// A time in milliseconds must fit into 31 bits.
constexpr std::size_t kMostDigitsOfTimeLimit = 6;

std::optional<std::chrono::seconds> parseTimeLimit(std::wstring_view text) {
  const bool digitsOnly =
      std::all_of(text.begin(), text.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
  if (text.empty() || text.size() > kMostDigitsOfTimeLimit || !digitsOnly) return std::nullopt;
  return std::chrono::seconds(std::stol(std::wstring(text)));
}

class OptionReader {
 public:
  explicit OptionReader(const std::vector<std::wstring>& arguments) : arguments_(arguments) {}

  std::optional<Options> read() {
    while (complaint_.empty() && next_ < arguments_.size()) readOption(arguments_[next_++]);
    if (!complaint_.empty()) return std::nullopt;
    return options_;
  }

  [[nodiscard]] const std::wstring& complaint() const { return complaint_; }

 private:
  void readOption(const std::wstring& name) {
    if (name == L"--help") {
      options_.help = true;
    } else if (name == L"--once") {
      options_.leaveAfter = LeaveAfter::kFirstMessage;
    } else if (name == L"--until-stopprint") {
      options_.leaveAfter = LeaveAfter::kFirstStopPrint;
    } else if (name == L"--convert") {
      options_.conversion = Conversion::kAlways;
    } else if (name == L"--no-convert") {
      options_.conversion = Conversion::kNever;
    } else if (name == L"--file-only") {
      options_.fileOnly = true;
    } else if (name == L"--folder") {
      options_.folder = valueOf(name);
    } else if (name == L"--log") {
      options_.logFile = valueOf(name);
    } else if (name == L"--run") {
      const std::wstring value = valueOf(name);
      if (complaint_.empty()) options_.command = CommandTemplate::parse(value, complaint_);
    } else if (name == L"--exit-after") {
      const std::wstring value = valueOf(name);
      options_.timeLimit = parseTimeLimit(value);
      if (complaint_.empty() && !options_.timeLimit) complaint_ = L"not a number of seconds: " + value;
    } else {
      complaint_ = L"unknown option " + name;
    }
  }

  std::wstring valueOf(const std::wstring& name) {
    if (next_ < arguments_.size() && !arguments_[next_].empty()) return arguments_[next_++];
    complaint_ = name + L" needs a value";
    return {};
  }

  const std::vector<std::wstring>& arguments_;
  std::size_t next_ = 0;
  Options options_;
  std::wstring complaint_;
};

}  // namespace

const wchar_t* const kHelpText =
    L"twsmsnd [OPTION]...\n"
    L"\n"
    L"Receives what the printer tells: which printer begins a job, which file is finished.\n"
    L"Each message becomes a line of tab-separated fields, in UTF-8:\n"
    L"\n"
    L"  startprint  PRINTER\n"
    L"  stopprint   PRINTER  FILE  DOCUMENT\n"
    L"  converted   PDF  EXIT-CODE\n"
    L"\n"
    L"  --log FILE          append the lines to FILE, not to standard output\n"
    L"  --run COMMAND       run COMMAND for each finished file; its first %s becomes the\n"
    L"                      path of the file, its second the name of the document\n"
    L"  --convert           make a PDF of each finished file with quillpress.exe, and open it;\n"
    L"                      the default without --run, when that lies beside this program.\n"
    L"                      With --run the command gets the PDF, and nothing is opened\n"
    L"  --no-convert        leave finished files as they are\n"
    L"  --folder DIR        put the PDFs there; otherwise a PDF takes the place of a file that\n"
    L"                      is named .pdf, and goes beside others\n"
    L"  --file-only         make the PDF, but do not open it\n"
    L"  --once              leave after the first message\n"
    L"  --until-stopprint   leave after the first finished file\n"
    L"  --exit-after N      leave after N seconds\n"
    L"  --help              show this\n"
    L"\n"
    L"The printer starts this program without options; the environment variable\n"
    L"TWSMSND_OPTIONS may hold some, and is read before the command line.\n"
    L"\n"
    L"Ends with 0 when it has left as told or by Ctrl+C, 1 when the options make no sense,\n"
    L"2 when another launcher listens for this user, 3 when it cannot listen at all.\n";

std::optional<Options> parseOptions(const std::vector<std::wstring>& arguments, std::wstring& complaint) {
  OptionReader reader(arguments);
  std::optional<Options> options = reader.read();
  complaint = reader.complaint();
  return options;
}

}  // namespace quillpress::launcher
