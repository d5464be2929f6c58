#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

struct libdeflate_compressor;

namespace quillpress::cli {

// Compresses whole blocks of bytes for PDF's FlateDecode.
class Deflater {
 public:
  // How long to look for repetitions.
  enum class Effort { kNone = 0, kQuick = 5, kUsual = 6, kThorough = 7 };

  explicit Deflater(Effort effort = Effort::kUsual);

  // Calls `take(std::string_view)` with the compressed form of `bytes`, which is gone afterwards.
  template <typename Take>
  void deflate(std::string_view bytes, Take take) const {
    // Of the room for the worst case only what gets written takes up memory.
    const auto room = std::make_unique_for_overwrite<char[]>(bound(bytes.size()));
    take(std::string_view(room.get(), deflateInto(room.get(), bytes)));
  }

  // The length of the compressed form of `bytes`.
  [[nodiscard]] std::size_t deflatedSize(std::string_view bytes) const;

 private:
  struct Free {
    void operator()(libdeflate_compressor* compressor) const;
  };

  [[nodiscard]] std::size_t bound(std::size_t size) const;
  std::size_t deflateInto(char* room, std::string_view bytes) const;

  std::unique_ptr<libdeflate_compressor, Free> compressor_;
};

}  // namespace quillpress::cli
