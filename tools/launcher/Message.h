#pragma once

#include <string>

#include "umpd/rules/LauncherStruct.h"

namespace quillpress::launcher {

// What a record says. Texts are in the ANSI code page.
struct Message {
  enum class Kind {
    startPrint,      // a job begins: printerName
    stopPrint,       // a file is finished: printerName, outputPath, documentName
    unknownCommand,  // from a newer sender: command
    endlessText,     // a text of the message fills its field without a zero: command names the field
  };

  Kind kind = Kind::unknownCommand;
  std::string command;
  std::string printerName;
  std::string outputPath;
  std::string documentName;
};

// REQUIRES: a copy of the record. Everybody may write into the memory that it came from, at any time.
Message readMessage(const LauncherStruct& record);

}  // namespace quillpress::launcher
