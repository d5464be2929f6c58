#include "tests/scripts/runner/ScriptRun.h"

#include <cctype>

#include "tests/scripts/runner/Library.h"

namespace {

constexpr char kItemSeparator = '\036';
constexpr std::string_view kShowOperands = "count { (\\036) print == } repeat\n";

class Converter {
 public:
  Converter() : handle_(library().open(kIdentity)) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() { library().close(handle_); }

  // Appends the content that the chunk produces; false when the chunk fails.
  bool convert(std::string_view chunk, std::string& content) {
    int length = static_cast<int>(chunk.size());
    const char* text = library().convertToPdf(handle_, chunk.data(), &length);
    if (text != nullptr) content.append(text, static_cast<std::size_t>(length));
    return text != nullptr;
  }

  [[nodiscard]] std::string errorText() const { return library().getErrorStr(handle_); }

  [[nodiscard]] unsigned objectCount() const {
    unsigned count = 0;
    library().getPdfObjects(handle_, &count);
    return count;
  }

 private:
  static constexpr float kIdentity[6] = {1, 0, 0, 1, 0, 0};
  void* handle_;
};

// "Exception:[File.cpp:12] message" and a line feed gives "message".
std::string messageOf(const std::string& errorText) {
  const auto place = errorText.find("] ");
  if (place == std::string::npos) return errorText.empty() ? "(no error text)" : errorText;
  std::string message = errorText.substr(place + 2);
  if (!message.empty() && message.back() == '\n') message.pop_back();
  return message;
}

void removeSuffix(std::string& text, const std::string& suffix) {
  if (!suffix.empty() && text.ends_with(suffix)) text.erase(text.size() - suffix.size());
}

// The list of objects is one for the process, so names depend on the cases before.
std::string withRelativeObjectNumbers(const std::string& content, unsigned before) {
  std::string result;
  for (std::size_t i = 0; i < content.size();) {
    const std::size_t prefix = content.compare(i, 4, "/PSI") == 0  ? 4
                               : content.compare(i, 3, "/PA") == 0 ? 3
                                                                   : 0;
    std::size_t end = i + prefix;
    while (prefix > 0 && end < content.size() && std::isdigit(static_cast<unsigned char>(content[end])) != 0)
      ++end;
    if (prefix == 0 || end == i + prefix) {
      result += content[i++];
      continue;
    }
    const unsigned long number = std::stoul(content.substr(i + prefix, end - i - prefix));
    result += content.substr(i, prefix) + std::to_string(number - before);
    i = end;
  }
  return result;
}

// Turns the items, top first, into one line, bottom first.
std::string operandsOf(const std::string& messages) {
  std::string line;
  std::size_t end = messages.size();
  while (end > 0) {
    const auto separator = messages.rfind(kItemSeparator, end - 1);
    if (separator == std::string::npos) break;
    std::string item = messages.substr(separator + 1, end - separator - 1);
    if (!item.empty() && item.back() == '\n') item.pop_back();
    line += (line.empty() ? "" : " ") + item;
    end = separator;
  }
  return line;
}

}  // namespace

Outcome runScript(const std::vector<std::string_view>& chunks, bool showOperands) {
  Outcome outcome;
  Converter converter;
  takeMessages();
  const unsigned objectsBefore = converter.objectCount();
  std::string errorText;
  for (const std::string_view chunk : chunks) {
    if (converter.convert(chunk, outcome.content)) continue;
    errorText = converter.errorText();
    outcome.error = messageOf(errorText);
    break;
  }
  outcome.prints = takeMessages();
  removeSuffix(outcome.prints, errorText);
  outcome.content = withRelativeObjectNumbers(outcome.content, objectsBefore);
  if (!showOperands) return outcome;
  std::string ignored;
  const bool shown = converter.convert(kShowOperands, ignored);
  const std::string messages = takeMessages();
  outcome.operands = shown ? operandsOf(messages) : "(cannot be shown: " + converter.errorText() + ")";
  return outcome;
}
