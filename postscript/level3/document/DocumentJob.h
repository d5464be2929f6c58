#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "postscript/level3/pdf/Output.h"
#include "postscript/level3/streams/ByteSink.h"
#include "postscript/level3/streams/ByteSource.h"

namespace quillpress::level3 {

// What can be chosen for a conversion.
struct DocumentOptions {
  // The page when the job asks for none; points.
  double pageWidth = 595;
  double pageHeight = 842;
  enum class Crop { kWhenEncapsulated, kAlways, kNever } crop = Crop::kWhenEncapsulated;
  // Whether pages are turned so that their text is upright; encapsulated pictures never are.
  bool turnsPages = true;
  std::optional<double> timeoutSeconds;
  std::optional<std::size_t> maxMemory;
  std::vector<std::string> readableFolders;
  // Bytes after which values that nothing holds are collected; 0 leaves that to what is in use.
  std::size_t collectionStep = 0;
  // As ImageSettings has them.
  int imageQuality = 0;
  double imageResolution = 0;
  // Whether streams are compressed while the job goes on.
  bool usesSecondThread = false;
  // What the job prints; dropped when null.
  SinkPointer messages;
  // Called after each page with their number; false ends the job.
  std::function<bool(std::size_t)> progress;
};

struct DocumentResult {
  enum class Status {
    kDone,
    kIncomplete,  // the job ended before it was complete, or something was not kept
    kFailed,      // an error, or ended from outside; the pages complete so far are in the file
    kNoPages,     // nothing was written
  };
  Status status = Status::kDone;
  std::size_t pages = 0;
  // One line, when the job failed.
  std::string error;
  // What the line says of an error of the job's own: its name, the page from 1, the byte from 0.
  std::string errorName;
  std::size_t errorPage = 0;
  std::optional<std::uint64_t> errorByte;
  std::vector<std::string> warnings;
  // Names of fonts that the job asked for, and that another stood in for.
  std::vector<std::string> substitutedFonts;
  // The job could not be read to its end.
  bool isUnreadable = false;
};

// Converts one job. `isCancelled` may be set by another thread.
DocumentResult convertDocument(const SourcePointer& job, Output& output, const DocumentOptions& options,
                               const std::atomic<bool>& isCancelled);

}  // namespace quillpress::level3
