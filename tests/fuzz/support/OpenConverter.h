#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "postscript/lib/pdf/Postscript2Pdf.h"

namespace quillpress::fuzz {

// A job as a host hands it over.
struct Job {
  std::vector<std::string_view> chunks;
  bool goesOn = false;           // after a chunk that has failed; else that chunk is the last
  std::string_view preparation;  // a chunk that runs before, within no bounds, and must not fail
};

// What a job has done.
struct Result {
  bool isComplete = true;  // neither memory nor steps ran out
  std::string errors;      // the error texts of the chunks that failed
  std::string content;     // of the others
  std::string operands;    // the operand stack's texts, bottom first
  std::string objects;     // the PDF objects: names, dictionaries and data
};

// Lets an action use a converter that is open and new; false when steps or memory ran out. The converter is
// opened once in the process and set back to that moment after each use, which is many times as fast as
// opening one. What the action makes goes with it, unless it is made while a heap::Unwatched exists.
//
// REQUIRES: the action leaves by returning; it catches exceptions.
bool useOpenConverter(void (*action)(Postscript2Pdf& converter, void* context), void* context);

// The same with two handles of the C interface.
bool useOpenHandles(void (*action)(void* (&handles)[2], void* context), void* context);

// Converts a job in the open converter.
Result convertInOpenConverter(const Job& job);

// The same in a converter that is opened for this job alone and closed after it. Checks that nothing of it
// is left over.
Result convertInNewConverter(const Job& job);

// Checks that both tell the same story.
void checkEqual(const Result& left, const Result& right);

}  // namespace quillpress::fuzz
