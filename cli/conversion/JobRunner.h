#pragma once

#include <chrono>
#include <memory>
#include <string_view>

#include "cli/conversion/Converter.h"
#include "cli/spool/Spool.h"

namespace quillpress::cli {

// The converter of a job, with the means to go on after an error. An error leaves the interpreter where it
// was, in the middle of procedures, loops or data. Usually it can be run out of them and keeps all that the
// job has defined. Where it cannot, a new one runs the job's prologue and set-up again, which is all that
// pages may rely on by the structuring conventions.
class JobRunner {
 public:
  JobRunner();

  Converter& converter() { return *converter_; }

  // Keeps the text before the first page in `spool` from now on.
  void recordSetUp(Spool& spool) { record_ = &spool; }
  void record(std::string_view setUp);
  // The text so far failed and is not to be run again.
  void forgetSetUp();

  // Makes the converter ready for another page after an error.
  void recover();

  // Whether new text is run; it is not when the job has left something open, a string or a procedure or an
  // image, and the converter waits for the rest of it. REQUIRES: the content of the present page is complete,
  // as the answer comes by way of the graphics state.
  bool isListening();

 private:
  bool runOut();
  bool runOutAside();
  void reopen();

  std::unique_ptr<Converter> converter_;
  Spool* record_ = nullptr;
  std::chrono::milliseconds patience_{10000};  // what may still be spent on procedures that do not end
};

}  // namespace quillpress::cli
