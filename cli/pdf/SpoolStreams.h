#pragma once

#include <memory>
#include <qpdf/QPDFObjectHandle.hh>
#include <vector>

#include "cli/spool/Spool.h"

namespace quillpress::cli {

// Gives PDF streams their data from the spool when they are written, so that none of it waits in memory.
// One object serves all streams of a file.
class SpoolStreams final : public QPDFObjectHandle::StreamDataProvider,
                           public std::enable_shared_from_this<SpoolStreams> {
 public:
  explicit SpoolStreams(const Spool& spool) : StreamDataProvider(false), spool_(spool) {}

  // `stream` gets the bytes of `piece`, which are what its dictionary says.
  void provide(QPDFObjectHandle stream, const Spool::Piece& piece);

  void provideStreamData(QPDFObjGen const& stream, Pipeline* pipeline) override;

 private:
  const Spool& spool_;
  std::vector<Spool::Piece> pieces_;  // by object number
};

}  // namespace quillpress::cli
