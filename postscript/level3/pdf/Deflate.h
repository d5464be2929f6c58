#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

struct libdeflate_compressor;

namespace quillpress::level3 {

// Writes bytes in zlib's form, as FlateDecode reads them. For one thread at a time.
class Deflater {
 public:
  // libdeflate's: the next takes a quarter longer and saves less than half a part in a hundred, on pages of
  // text and of vectors.
  static constexpr int kUsualLevel = 5;

  explicit Deflater(int level = kUsualLevel);

  // One of the usual level, for whoever is in this thread: its tables are large.
  static Deflater& ofThisThread();

  // The room that so many bytes take at most.
  [[nodiscard]] std::size_t bound(std::size_t count) const;
  // Returns the number of bytes written. REQUIRES: `room` has bound(bytes.size()) bytes
  std::size_t deflate(std::string_view bytes, char* room);

 private:
  struct Free {
    void operator()(libdeflate_compressor* compressor) const;
  };
  std::unique_ptr<libdeflate_compressor, Free> compressor_;
};

// The same at once.
std::string deflated(std::string_view bytes);

// How many bytes that takes with little effort: for comparing ways to prepare the same data.
std::size_t roughlyDeflatedSize(std::string_view bytes);

// The same for data that is too large to be held: what is ready goes to `next` as it comes.
class StreamingDeflater {
 public:
  using Next = std::function<void(std::string_view)>;

  explicit StreamingDeflater(Next next);
  ~StreamingDeflater();
  StreamingDeflater(const StreamingDeflater&) = delete;
  StreamingDeflater& operator=(const StreamingDeflater&) = delete;

  void write(std::string_view bytes);
  void finish();

 private:
  struct State;
  void run(std::string_view bytes, int flush);

  std::unique_ptr<State> state_;
  Next next_;
};

}  // namespace quillpress::level3
