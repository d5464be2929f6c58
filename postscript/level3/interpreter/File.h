#pragma once

#include <algorithm>
#include <string>
#include <utility>

#include "postscript/level3/objects/Storage.h"
#include "postscript/level3/objects/Tracer.h"
#include "postscript/level3/streams/ByteSink.h"
#include "postscript/level3/streams/ByteSource.h"

namespace quillpress::level3 {

// What a file object stands for: something to read, or something to write. A file may depend on objects of
// the job (the string, procedure or file that a filter is laid over), which live as long as it does.
class File final : public Foreign {
 public:
  explicit File(SourcePointer source, std::span<const Object> dependsOn = {})
      : source_(std::move(source)),
        dependsOn_(dependsOn.begin(), dependsOn.end()),
        depth_(depthOver(dependsOn)) {}
  explicit File(SinkPointer sink, std::span<const Object> dependsOn = {})
      : sink_(std::move(sink)),
        dependsOn_(dependsOn.begin(), dependsOn.end()),
        depth_(depthOver(dependsOn)) {}

  [[nodiscard]] bool isReadable() const { return source_ != nullptr; }
  [[nodiscard]] bool isWritable() const { return sink_ != nullptr; }
  // REQUIRES: isReadable()
  [[nodiscard]] ByteSource& source() const { return *source_; }
  [[nodiscard]] const SourcePointer& sourcePointer() const { return source_; }
  // REQUIRES: isWritable()
  [[nodiscard]] ByteSink& sink() const { return *sink_; }
  [[nodiscard]] const SinkPointer& sinkPointer() const { return sink_; }

  [[nodiscard]] bool isClosed() const { return source_ ? source_->isClosed() : sink_->isClosed(); }
  // False when what was still due could not be written.
  bool close() {
    if (sink_ != nullptr) return sink_->close();
    source_->close();
    return true;
  }

  // How many files lie below this one; data passes through all of them.
  [[nodiscard]] std::size_t depth() const { return depth_; }

  void trace(Tracer& tracer) const override { tracer.visit(dependsOn_); }

  // A closed one has let go of its buffers.
  [[nodiscard]] std::size_t bytes() const override { return isClosed() ? 0 : kUsualBuffers; }

 private:
  static constexpr std::size_t kUsualBuffers = 32768;

  static std::size_t depthOver(std::span<const Object> objects);

  SourcePointer source_;
  SinkPointer sink_;
  std::vector<Object> dependsOn_;
  std::size_t depth_;
};

// REQUIRES: object.isFile()
inline File& fileOf(const Object& object) {
  return static_cast<File&>(object.foreignStorage()->contents());
}

inline std::size_t File::depthOver(std::span<const Object> objects) {
  std::size_t depth = 0;
  for (const Object& object : objects) {
    if (object.isFile()) depth = std::max(depth, fileOf(object).depth() + 1);
  }
  return depth;
}

}  // namespace quillpress::level3
