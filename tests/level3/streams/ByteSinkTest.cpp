#include <gtest/gtest.h>

#include <array>

#include "postscript/level3/streams/ByteSink.h"
#include "postscript/level3/streams/CallbackStreams.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {
namespace {

TEST(ByteSinkTest, KeepsWhatIsWritten) {
  MemorySink sink;
  EXPECT_TRUE(sink.write(bytesOf("ab")));
  EXPECT_TRUE(sink.put('c'));
  EXPECT_EQ(textOf(sink.bytes()), "abc");
  EXPECT_EQ(sink.position(), 3U);
}

TEST(ByteSinkTest, AFullBufferFails) {
  std::array<Byte, 3> buffer{};
  BufferSink sink(buffer);
  EXPECT_TRUE(sink.write(bytesOf("ab")));
  EXPECT_FALSE(sink.write(bytesOf("cd")));
  EXPECT_EQ(textOf(sink.written()), "abc");
  EXPECT_EQ(sink.errorName(), "ioerror");
  EXPECT_FALSE(sink.write(bytesOf("e")));
  EXPECT_FALSE(sink.close());
}

TEST(ByteSinkTest, ClosingTellsTheCallbackOnce) {
  std::string log;
  PieceSink sink([&log](Bytes piece) {
    log += "[" + std::string(textOf(piece)) + "]";
    return true;
  });
  sink.write(bytesOf("ab"));
  EXPECT_TRUE(sink.close());
  EXPECT_TRUE(sink.close());
  EXPECT_FALSE(sink.write(bytesOf("c")));
  EXPECT_EQ(log, "[ab][]");
}

TEST(ByteSinkTest, ACallbackThatRefusesIsAnError) {
  PieceSink sink([](Bytes) { return false; });
  EXPECT_FALSE(sink.write(bytesOf("a")));
  EXPECT_TRUE(sink.hasFailed());
}

TEST(ByteSinkTest, CopiesASourceToItsEnd) {
  MemorySource source(bytesOf("abc"));
  MemorySink sink;
  EXPECT_TRUE(copyAll(source, sink));
  EXPECT_EQ(textOf(sink.bytes()), "abc");
}

}  // namespace
}  // namespace quillpress::level3
