#pragma once

#include <string>

#include "tests/umpd/launcher/support/TemporaryFolder.h"

namespace quillpress::classes {

// The program that notes how it was started, with a place for its note.
class NoteStart {
 public:
  NoteStart();
  ~NoteStart();
  NoteStart(const NoteStart&) = delete;
  NoteStart& operator=(const NoteStart&) = delete;

  // The path of the program.
  static std::wstring program();

  // Lets it end with this code instead of 0.
  void setExitCode(int code);

  // Whether it has run.
  [[nodiscard]] bool hasRun() const;

  // What it was started with and in. REQUIRES: hasRun()
  [[nodiscard]] std::wstring commandLine() const { return line(0); }
  [[nodiscard]] std::wstring workingFolder() const { return line(1); }

 private:
  [[nodiscard]] std::wstring line(int number) const;

  harness::TemporaryFolder folder_;
};

}  // namespace quillpress::classes
