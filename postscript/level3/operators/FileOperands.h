#pragma once

#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

// A file operand that is to be read; nullptr when it has been closed, which reads as its end.
// Throws invalidaccess for one that cannot be read.
inline ByteSource* sourceOf(const Object& file) {
  const File& contents = fileOf(file);
  if (!contents.isReadable() || !file.isReadable()) raise(ErrorName::kInvalidAccess);
  return contents.isClosed() ? nullptr : &contents.source();
}

// A file operand that is to be written. Throws invalidaccess, and ioerror when it is closed.
inline ByteSink& sinkOf(const Object& file) {
  const File& contents = fileOf(file);
  if (!contents.isWritable() || !file.isWritable()) raise(ErrorName::kInvalidAccess);
  if (contents.isClosed()) raise(ErrorName::kIoError);
  return contents.sink();
}

// The end of a source closes it, unless it can be read again; an error in it is an error of the operator.
inline void endOf(ByteSource& source) {
  if (source.hasFailed()) raise(ErrorName::kIoError);
  if (!source.staysOpen()) source.close();
}

}  // namespace quillpress::level3
