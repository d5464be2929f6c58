#include <gtest/gtest.h>
#include <libdeflate.h>

#include "cli/base/Errors.h"
#include "cli/content/PageContent.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class PageContentTest : public FolderTest {
 protected:
  Spool spool_{folder()};

  // The content streams that come of the pieces of a page.
  std::vector<std::string> streamsOf(const std::vector<std::string>& converted) {
    const Deflater deflater;
    SpoolWorker worker(spool_);
    PageContent content(worker, deflater);
    for (const std::string& text : converted) content.append(text);
    content.finish();
    const auto pieces = worker.finish();
    std::vector<std::string> streams;
    for (const SpoolWorker::Ticket ticket : content.pieces()) streams.push_back(inflated(pieces[ticket]));
    return streams;
  }

  std::string streamOf(const std::string& converted) {
    const auto streams = streamsOf({converted});
    EXPECT_EQ(streams.size(), 1U);
    return streams.at(0);
  }

 private:
  [[nodiscard]] std::string inflated(const Spool::Piece& piece) const {
    std::string deflated;
    readPiece(spool_, piece, [&](std::string_view bytes) { deflated += bytes; });
    std::string text(std::size_t{1} << 21U, '\0');
    std::size_t size = 0;
    libdeflate_decompressor* const decompressor = libdeflate_alloc_decompressor();
    const auto result = libdeflate_zlib_decompress(decompressor, deflated.data(), deflated.size(),
                                                   text.data(), text.size(), &size);
    libdeflate_free_decompressor(decompressor);
    EXPECT_EQ(result, LIBDEFLATE_SUCCESS);
    text.resize(size);
    return text;
  }
};

TEST_F(PageContentTest, APageStandsBetweenASaveAndARestore) {
  EXPECT_EQ(streamOf("1 w 0 0 m 9 9 l S\n"), "q\n1 w 0 0 m 9 9 l S\nQ\n");
  EXPECT_EQ(streamOf(""), "q\nQ\n");
}

TEST_F(PageContentTest, PathsStayWhereTheyAre) {
  const std::string text = "0 0 m 9 9 l q 2 0 0 2 0 0 cm f Q S\n";
  EXPECT_EQ(streamOf(text), "q\n" + text + "Q\n");
}

TEST_F(PageContentTest, WhatIsLeftOpenIsClosed) {
  EXPECT_EQ(streamOf("q q 1 w "), "q\nq q 1 w Q\nQ\nQ\n");
}

TEST_F(PageContentTest, ARestoreTooManyBeginsAnew) {
  EXPECT_EQ(streamOf("Q 1 w "), "q\nQ q 1 w Q\n");
}

TEST_F(PageContentTest, LongContentIsCutAtWhiteSpaceWhereverItCame) {
  std::vector<std::string> parts;
  std::string whole;
  for (int i = 0; i < 60000; ++i) {
    parts.push_back(std::to_string(i) + " 1000 m " + std::to_string(i) + " 2000 l S\n");
    whole += parts.back();
  }
  const auto streams = streamsOf(parts);
  ASSERT_GT(streams.size(), 1U);
  std::string joined;
  for (std::size_t i = 0; i + 1 < streams.size(); ++i)
    EXPECT_TRUE(streams[i].ends_with('\n') || streams[i].ends_with(' '));
  for (const std::string& stream : streams) joined += stream;
  EXPECT_EQ(joined, "q\n" + whole + "Q\n");
  EXPECT_EQ(streamsOf({whole}), streams);
}

TEST_F(PageContentTest, NumbersOutOfRangeAreRefused) {
  const Deflater deflater;
  SpoolWorker worker(spool_);
  PageContent content(worker, deflater);
  EXPECT_THROW(content.append("q 10000000000000000000 w Q\n"), PageError);
  EXPECT_THROW(content.append("1 w 10000000000000000000 w\n"), PageError);
}

TEST_F(PageContentTest, ObjectsAreCollected) {
  const Deflater deflater;
  SpoolWorker worker(spool_);
  PageContent content(worker, deflater);
  content.append("q 2 0 0 2 0 0 cm /PSI7 Do Q /PSI7 Do ");
  content.append("/PA8 scn ");
  EXPECT_EQ(content.objects(), (ObjectUses{7, 8}));
}

}  // namespace
}  // namespace quillpress::cli
