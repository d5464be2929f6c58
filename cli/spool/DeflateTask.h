#pragma once

#include <string>

#include "cli/spool/Deflater.h"
#include "cli/spool/SpoolWorker.h"

namespace quillpress::cli {

// The task of compressing `text` into the spool. `deflater` lives as long as the worker.
inline SpoolWorker::Task deflateTask(const Deflater& deflater, std::string text) {
  return [&deflater, text = std::move(text)](Spool& spool) {
    Spool::Piece piece;
    deflater.deflate(text, [&](std::string_view bytes) { piece = spool.append(bytes); });
    return piece;
  };
}

}  // namespace quillpress::cli
