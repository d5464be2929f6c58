#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// The only file is the text being interpreted, and files that filter derives from it. The reading
// operators that find the chunk used up push their operands back and themselves on the execution stack,
// and go on with the next chunk: the result is the same however the job is cut. What has been read so
// far stays in the operator object; only one read can be waiting at a time.

// -  currentfile  file      A new handle each time; all of them read the same text.
DECLARE_OPERATOR(CurrentfileOperator, "currentfile");

// file  read  int true
// file  read  false
// Kept: a zero byte and the end of the data are not told apart. Bytes are signed
// (ReadTest.AZeroByteLooksLikeTheEnd).
DECLARE_OPERATOR(ReadOperator, "read");

// file string  readstring  substring true      Fills the string, whatever the bytes.
class ReadstringOperator final : public NameObject {
 public:
  ReadstringOperator() : NameObject("readstring") {}
  void execute(Interpreter& interpreter) override;

 private:
  std::size_t filled_ = 0;  // bytes of the buffer that are already there
};

// file string  readhexstring  substring true      Skips what is no hex digit.
class ReadhexstringOperator final : public NameObject {
 public:
  ReadhexstringOperator() : NameObject("readhexstring") {}
  void execute(Interpreter& interpreter) override;

 private:
  std::size_t filled_ = 0;
  int highDigit_ = -1;  // half a byte
};

// file string  readline  line bool      The line is a new string; the buffer receives what fits. The
// boolean is true for a line that is not empty; for an empty one, while the chunk holds more.
class ReadlineOperator final : public NameObject {
 public:
  ReadlineOperator() : NameObject("readline") {}
  void execute(Interpreter& interpreter) override;

 private:
  std::string line_;
};

// source name  filter  file
// source 0 () /SubFileDecode  filter  file      Only this pair of parameters is supported.
// procedure ...  filter      Runs the procedure, then itself again on what is there.
DECLARE_OPERATOR(FilterOperator, "filter");

}  // namespace quillpress
