#pragma once

#include <qpdf/QPDFObjectHandle.hh>
#include <string>
#include <string_view>

#include "cli/pdf/PngFilter.h"
#include "cli/spool/Deflater.h"
#include "cli/spool/Spool.h"

namespace quillpress::cli {

// How the samples of an image are best compressed, found out from some of its rows.
class ImageEncoding {
 public:
  // `dictionary` is the image's stream dictionary; `samples` stay where they are as long as this lives.
  ImageEncoding(QPDFObjectHandle dictionary, std::string_view samples);

  // Completes the image's stream dictionary: FlateDecode, with a predictor if there is one.
  void describe(QPDFObjectHandle dictionary) const;

  // Compresses the samples into the spool.
  Spool::Piece encode(Spool& spool) const;

 private:
  void choose();
  [[nodiscard]] std::string sampled(PngFilter filter) const;
  void appendRows(std::string& target, PngFilter filter, std::size_t first, std::size_t rows) const;

  std::string_view samples_;
  RowLayout layout_{};
  std::size_t rows_ = 0;  // none when the samples are not whole rows of whole bytes
  PngFilter filter_ = PngFilter::kNone;
  Deflater::Effort effort_ = Deflater::Effort::kUsual;
};

}  // namespace quillpress::cli
