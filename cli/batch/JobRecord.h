#pragma once

#include <string>
#include <string_view>

#include "cli/base/TaskResult.h"
#include "cli/base/Tasks.h"

namespace quillpress::cli {

// What has become of a job, as a line of JSON without its end.
std::string jobRecord(const Task& task, const TaskResult& result);

// A job that is left alone, as its output is there.
std::string skippedRecord(const Task& task);

// `text` as a string of JSON. Bytes that are no UTF-8, as names of files may hold, become the lone surrogates
// U+DC80 to U+DCFF, from which programs can make the bytes again.
std::string jsonString(std::string_view text);

// The output that a record names, as the string of JSON that it is; empty when the line is no record.
std::string_view outputOfRecord(std::string_view record);

}  // namespace quillpress::cli
