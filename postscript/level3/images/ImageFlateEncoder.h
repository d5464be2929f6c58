#pragma once

#include <cstddef>

#include "postscript/level3/pdf/WorkerThread.h"
#include "postscript/level3/streams/Filter.h"

namespace quillpress::level3 {

struct ImageFlateSettings {
  int effort = -1;  // zlib's
  // The data is what a predictor has left of rows: parts without repetitions are written without a search,
  // which is quicker and shorter.
  bool isPredicted = false;
  // Deflates in a thread of its own while the job gives the next rows; the result is the same. Where no
  // thread can be had it is done by the caller.
  bool usesThread = false;
  std::size_t stackSize = WorkerThread::kStackSize;
};

// Compresses the data of a large image for FlateDecode, and closes its target with it.
SinkPointer imageFlateEncoder(SinkPointer target, const ImageFlateSettings& settings);

}  // namespace quillpress::level3
