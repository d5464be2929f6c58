#pragma once

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
      : source_(std::move(source)), dependsOn_(dependsOn.begin(), dependsOn.end()) {}
  explicit File(SinkPointer sink, std::span<const Object> dependsOn = {})
      : sink_(std::move(sink)), dependsOn_(dependsOn.begin(), dependsOn.end()) {}

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

  void trace(Tracer& tracer) const override { tracer.visit(dependsOn_); }

 private:
  SourcePointer source_;
  SinkPointer sink_;
  std::vector<Object> dependsOn_;
};

// REQUIRES: object.isFile()
inline File& fileOf(const Object& object) {
  return static_cast<File&>(object.foreignStorage()->contents());
}

}  // namespace quillpress::level3
