#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "postscript/level3/pdf/PdfFile.h"
#include "tests/level3/pdf/MemoryOutput.h"

namespace quillpress::level3 {
namespace {

enum class Threads { kOne, kTwo };

std::string manyPoints(int number, std::size_t size) {
  std::string result;
  while (result.size() < size)
    result += std::to_string(number * 7919 + static_cast<int>(result.size())) + " 0 m ";
  return result;
}

// Streams large and small, as they are and deflated, at once and in pieces, between objects.
void write(PdfFile& file) {
  for (int number = 0; number < 25; ++number) {
    file.addSharedStream("/Large true", manyPoints(number, 30'000), StreamData::kDeflate);
    file.addStream("/Small true", manyPoints(number, 50), StreamData::kDeflate);
    if (number % 5 == 0) file.addStream("/Plain true", manyPoints(number, 9'000), StreamData::kPlain);
    if (number % 7 == 0) {
      PdfFile::OpenStream stream = file.openStream("/Pieces true", StreamData::kDeflate);
      stream.write(manyPoints(number, 3'000));
      stream.write(manyPoints(number + 1, 3'000));
      stream.finish();
    }
    file.add("<</Number " + std::to_string(number) + ">>");
  }
  for (int number = 0; number < 3; ++number)
    file.addStream("", manyPoints(number, 700'000), StreamData::kDeflate);
  file.finish(file.add("<</Type/Catalog>>"), 0);
}

std::string written(Threads threads) {
  MemoryOutput memory;
  PdfFile file(memory);
  if (threads == Threads::kTwo) file.deflateInSecondThread();
  write(file);
  return memory.bytes();
}

TEST(PdfFileTest, FileIsTheSameWithASecondThread) {
  const std::string expected = written(Threads::kOne);
  for (int round = 0; round < 3; ++round) EXPECT_TRUE(written(Threads::kTwo) == expected);
}

struct Full {};

class SmallOutput final : public Output {
 public:
  void write(std::string_view bytes) override {
    room_ -= static_cast<std::ptrdiff_t>(bytes.size());
    if (room_ < 0) throw Full();
  }

 private:
  std::ptrdiff_t room_ = 20'000;
};

TEST(PdfFileTest, FailedWriteComesOutWithASecondThreadToo) {
  SmallOutput output;
  PdfFile file(output);
  file.deflateInSecondThread();
  EXPECT_THROW(write(file), Full);
}

}  // namespace
}  // namespace quillpress::level3
