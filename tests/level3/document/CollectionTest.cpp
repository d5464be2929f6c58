#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>

#include "postscript/level3/document/DocumentJob.h"
#include "postscript/level3/streams/FileStreams.h"
#include "tests/level3/pdf/MemoryOutput.h"

namespace quillpress::level3 {
namespace {

std::string convertedCollecting(const std::filesystem::path& job, std::size_t step) {
  MemoryOutput pdf;
  DocumentOptions options;
  options.collectionStep = step;
  const std::atomic<bool> isCancelled = false;
  const DocumentResult result =
      convertDocument(std::make_shared<FileSource>(openFile(job, "rb")), pdf, options, isCancelled);
  return result.error + "\n" + pdf.bytes();
}

// Fonts, patterns, forms, images and colour spaces hold values of the job while procedures of the job run.
TEST(CollectionTest, WhenItComesChangesNoDrawing) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(LANGUAGE_PAGES)) {
    const std::string rarely = convertedCollecting(entry.path(), 0);
    EXPECT_TRUE(convertedCollecting(entry.path(), 4096) == rarely) << entry.path();
    ++count;
  }
  EXPECT_GT(count, 200U);
}

}  // namespace
}  // namespace quillpress::level3
