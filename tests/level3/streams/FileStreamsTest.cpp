#include <gtest/gtest.h>

#include <string>

#include "postscript/level3/streams/FileStreams.h"

namespace quillpress::level3 {
namespace {

class FileStreamsTest : public ::testing::Test {
 protected:
  FileStreamsTest() : path_(std::filesystem::path(::testing::TempDir()) / name()) {}
  ~FileStreamsTest() override { std::filesystem::remove(path_); }

  void store(std::string_view text) {
    FileSink sink(openFile(path_, "wb"));
    EXPECT_TRUE(sink.write(bytesOf(text)));
    EXPECT_TRUE(sink.close());
  }

  [[nodiscard]] std::string stored() const {
    FileSource source(openFile(path_, "rb"));
    std::string text;
    while (source.refill()) {
      text += textOf(source.peek());
      source.dropBuffered();
    }
    return text;
  }

  std::filesystem::path path_;

 private:
  static std::string name() {
    return std::string("quillpress-") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
  }
};

TEST_F(FileStreamsTest, AFileIsReadAsItWasWritten) {
  const std::string text(200000, 'x');
  store(text);
  EXPECT_EQ(stored(), text);
}

TEST_F(FileStreamsTest, ASourceSeeksWithinItsFile) {
  store("abcdef");
  FileSource source(openFile(path_, "rb"));
  EXPECT_TRUE(source.canSeek());
  source.drain();
  EXPECT_TRUE(source.seek(2));
  EXPECT_EQ(source.get(), 'c');
  EXPECT_EQ(source.available(), 3U);
  EXPECT_FALSE(source.seek(7));
  EXPECT_EQ(source.get(), 'd');
}

TEST_F(FileStreamsTest, ASinkSeeksAndOverwrites) {
  {
    FileSink sink(openFile(path_, "wb"));
    sink.write(bytesOf("abcdef"));
    EXPECT_TRUE(sink.seek(1));
    sink.write(bytesOf("X"));
    EXPECT_EQ(sink.position(), 2U);
    EXPECT_TRUE(sink.close());
  }
  EXPECT_EQ(stored(), "aXcdef");
}

TEST_F(FileStreamsTest, FlushingMakesTheBytesVisible) {
  FileSink sink(openFile(path_, "wb"));
  sink.write(bytesOf("abc"));
  EXPECT_TRUE(sink.flush());
  EXPECT_EQ(stored(), "abc");
}

TEST_F(FileStreamsTest, WritingToAFileThatIsOpenForReadingFails) {
  store("abc");
  FileSink sink(openFile(path_, "rb"));
  sink.write(bytesOf("d"));
  EXPECT_FALSE(sink.flush());
  EXPECT_EQ(sink.errorName(), "ioerror");
}

TEST_F(FileStreamsTest, AMissingFileIsNotOpened) {
  EXPECT_FALSE(openFile(path_, "rb"));
}

TEST_F(FileStreamsTest, ABorrowedFileStaysOpen) {
  store("abc");
  const FileHandle owner = openFile(path_, "rb");
  {
    FileSource source(borrowFile(owner.get()));
    EXPECT_EQ(source.get(), 'a');
    source.close();
  }
  EXPECT_EQ(std::fseek(owner.get(), 0, SEEK_SET), 0);
  EXPECT_EQ(std::fgetc(owner.get()), 'a');
}

}  // namespace
}  // namespace quillpress::level3
