#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quillpress::level3 {

// The bytes in zlib's form, as FlateDecode reads them.
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
