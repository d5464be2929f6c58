#include "tools/launcher/Message.h"

#include <algorithm>

namespace quillpress::launcher {
namespace {

// Copies texts out of fields until one has no end.
class FieldReader {
 public:
  FieldReader& read(const driver::LauncherText& field, const char* name, std::string& text) {
    if (endless_ != nullptr) return *this;
    const auto* end = std::find(field.begin(), field.end(), '\0');
    if (end == field.end()) {
      endless_ = name;
    } else {
      text.assign(field.begin(), end);
    }
    return *this;
  }

  // The name of the field without an end; null when all texts had theirs.
  [[nodiscard]] const char* endless() const { return endless_; }

 private:
  const char* endless_ = nullptr;
};

Message::Kind kindOf(const std::string& command) {
  if (command == driver::kStartPrint) return Message::Kind::kStartPrint;
  if (command == driver::kStopPrint) return Message::Kind::kStopPrint;
  return Message::Kind::kUnknownCommand;
}

}  // namespace

Message readMessage(const driver::LauncherStruct& record) {
  Message message;
  FieldReader reader;
  reader.read(record.command, "command", message.command);
  message.kind = kindOf(message.command);
  // A field that the command does not have holds what earlier messages left in it.
  if (message.kind != Message::Kind::kUnknownCommand) {
    reader.read(record.printerName, "printer name", message.printerName);
  }
  if (message.kind == Message::Kind::kStopPrint) {
    reader.read(record.outputPath, "output path", message.outputPath)
        .read(record.documentName, "document name", message.documentName);
  }
  if (reader.endless() != nullptr) return {Message::Kind::kEndlessText, reader.endless(), {}, {}, {}};
  return message;
}

}  // namespace quillpress::launcher
