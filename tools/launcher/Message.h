#pragma once

#include <string>

#include "umpd/rules/LauncherStruct.h"

namespace quillpress::launcher {

// What a record says. Texts are in the ANSI code page.
struct Message {
  enum class Kind {
    kStartPrint,      // a job begins: printerName
    kStopPrint,       // a file is finished: printerName, outputPath, documentName
    kUnknownCommand,  // from a newer sender: command
    kEndlessText,     // a text of the message fills its field without a zero: command names the field
  };

  Kind kind = Kind::kUnknownCommand;
  std::string command;
  std::string printerName;
  std::string outputPath;
  std::string documentName;
};

// REQUIRES: a copy of the record. Everybody may write into the memory that it came from, at any time.
Message readMessage(const driver::LauncherStruct& record);

}  // namespace quillpress::launcher
