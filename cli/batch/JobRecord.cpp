#include "cli/batch/JobRecord.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "cli/base/Messages.h"
#include "cli/base/Utf8.h"

namespace quillpress::cli {

namespace {

// A record goes through a pipe in one piece, so a job with a thousand warnings tells the first ones.
constexpr std::size_t kMostTexts = 50;
constexpr std::string_view kOutputKey = ",\"output\":";

std::string escaped(unsigned code) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "\\u%04x", code);
  return text.data();
}

void appendCharacter(std::string& text, std::string_view character) {
  const char first = character.front();
  if (first == '"' || first == '\\') {
    text.append(1, '\\').append(1, first);
  } else if (static_cast<unsigned char>(first) < 0x20) {
    text += escaped(static_cast<unsigned char>(first));
  } else {
    text.append(character);
  }
}

std::string jsonList(const std::vector<std::string>& texts) {
  std::string list = "[";
  const std::size_t count = std::min(texts.size(), kMostTexts);
  for (std::size_t index = 0; index < count; ++index) {
    if (index > 0) list += ',';
    list += jsonString(shortened(visible(texts[index])));
  }
  return list + "]";
}

std::string jsonText(const std::string& text) {
  return text.empty() ? "null" : jsonString(shortened(visible(text)));
}

std::string jsonNumber(const std::optional<std::uint64_t>& number) {
  return number ? std::to_string(*number) : "null";
}

std::string begin(const Task& task, ExitCode code) {
  return "{\"job\":" + jsonString(task.job) + std::string(kOutputKey) + jsonString(task.output) +
         ",\"code\":" + std::to_string(static_cast<int>(code));
}

}  // namespace

std::string jobRecord(const Task& task, const TaskResult& result) {
  std::array<char, 40> milliseconds{};
  std::snprintf(milliseconds.data(), milliseconds.size(), "%.3f", result.milliseconds);
  return begin(task, result.code) + ",\"error\":" + jsonText(result.errorName) +
         ",\"message\":" + jsonText(result.error) + ",\"page\":" + jsonNumber(result.errorPage) +
         ",\"byte\":" + jsonNumber(result.errorByte) + ",\"pages\":" + std::to_string(result.pages) +
         ",\"warnings\":" + jsonList(result.warnings) + ",\"fonts\":" + jsonList(result.substitutedFonts) +
         ",\"milliseconds\":" + milliseconds.data() + ",\"bytes\":" + std::to_string(result.bytes) + "}";
}

std::string skippedRecord(const Task& task) {
  return begin(task, ExitCode::kDone) + ",\"skipped\":true}";
}

std::string jsonString(std::string_view text) {
  constexpr unsigned kFirstSurrogate = 0xDC00;
  std::string result = "\"";
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    if (length == 0) {
      result += escaped(kFirstSurrogate + static_cast<unsigned char>(text.front()));
    } else {
      appendCharacter(result, text.substr(0, length));
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return result + "\"";
}

std::string_view outputOfRecord(std::string_view record) {
  const std::size_t key = record.find(kOutputKey);
  if (!record.starts_with("{\"job\":\"") || !record.ends_with('}') || key == std::string_view::npos)
    return {};
  const std::string_view value = record.substr(key + kOutputKey.size());
  for (std::size_t place = 1; place < value.size(); ++place) {
    if (value[place] == '"') return value.substr(0, place + 1);
    // What stands behind a backslash ends nothing.
    if (value[place] == '\\') ++place;
  }
  return {};
}

}  // namespace quillpress::cli
