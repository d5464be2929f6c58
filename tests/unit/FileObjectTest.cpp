#include <gtest/gtest.h>

#include "postscript/lib/objects/FileObject.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

class FileObjectTest : public testing::Test {
 protected:
  Interpreter interpreter;
  MemorySet& memory = interpreter.memory();
};

TEST_F(FileObjectTest, ReadsTheCurrentFileByteByByte) {
  const auto file = memory.newCurrentFile();
  interpreter.parser().setInput("ab", 2);
  EXPECT_EQ(file->readChar(interpreter), 'a');
  EXPECT_EQ(file->readChar(interpreter), 'b');
}

TEST_F(FileObjectTest, ReadingAtTheEndOfTheChunkThrows) {
  const auto file = memory.newCurrentFile();
  interpreter.parser().setInput("", 0);
  EXPECT_EQ(messageOf([&] { file->readChar(interpreter); }),
            "Progam attempting to read char when insufficient current file is loaded");
}

TEST_F(FileObjectTest, TheReadOperatorAtTheEndOfTheChunkThrows) {
  EXPECT_EQ(messageOf([&] { run(interpreter, "currentfile read "); }),
            "Progam attempting to read char when insufficient current file is loaded");
}

TEST_F(FileObjectTest, TheReadOperatorTakesOneByteBehindItsDelimiter) {
  run(interpreter, "currentfile read A5 ");
  EXPECT_EQ(operandsOf(interpreter), "65 true 5");
}

TEST_F(FileObjectTest, AnyOtherFileCannotBeRead) {
  const auto file = memory.newFilteredFile(memory.newString("abc"), "f", 0);
  EXPECT_EQ(messageOf([&] { file->readChar(interpreter); }), "Read not supported on this file type");
}

TEST_F(FileObjectTest, ASourceIsAStringOrAFile) {
  const auto file = memory.newCurrentFile();
  EXPECT_NO_THROW((void)memory.newFilteredFile(file, "f", 0));
  EXPECT_NO_THROW((void)memory.newFilteredFile(memory.newString({}), "f", 0));
  EXPECT_EQ(messageOf([&] { (void)memory.newFilteredFile(make<IntegerObject>(1), "f", 0); }),
            "Unsupported FileData source object type");
  EXPECT_EQ(messageOf([&] { (void)memory.newFilteredFile(nullptr, "f", 0); }),
            "Unsupported FileData source object type");
}

TEST_F(FileObjectTest, ThePayloadHoldsItsSource) {
  const Ref<StringObject> source = memory.newString("abc");
  {
    VirtualMemoryObject area("Area");
    const auto file = make<FileObject>(area, source, "ASCIIHexDecode", 7);
    EXPECT_EQ(source->refCount, 2);
    EXPECT_EQ(file->data().filterName, "ASCIIHexDecode");
    EXPECT_EQ(file->data().filterParameter, 7);
    EXPECT_FALSE(file->isCurrentFile());
  }
  EXPECT_EQ(source->refCount, 1);
}

TEST_F(FileObjectTest, KindsHaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(FileData::Kind::kCurrentFile), 1);
  EXPECT_EQ(static_cast<int>(FileData::Kind::kFiltered), 2);
}

}  // namespace
}  // namespace quillpress
