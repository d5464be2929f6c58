#include "cli/pdf/SpoolStreams.h"

#include <qpdf/Pipeline.hh>

namespace quillpress::cli {

void SpoolStreams::provide(QPDFObjectHandle stream, const Spool::Piece& piece) {
  const auto number = static_cast<std::size_t>(stream.getObjGen().getObj());
  // Object numbers are dense, so a vector is the shortest map.
  if (pieces_.size() <= number) pieces_.resize(number + 1);
  pieces_[number] = piece;
  // Handles without an object leave the dictionary's own filter as it is.
  stream.replaceStreamData(shared_from_this(), QPDFObjectHandle(), QPDFObjectHandle());
}

void SpoolStreams::provideStreamData(QPDFObjGen const& stream, Pipeline* pipeline) {
  const auto number = static_cast<std::size_t>(stream.getObj());
  readPiece(spool_, pieces_[number], [pipeline](std::string_view bytes) {
    pipeline->write(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  });
  pipeline->finish();
}

}  // namespace quillpress::cli
