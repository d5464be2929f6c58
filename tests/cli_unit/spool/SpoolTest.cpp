#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/spool/Spool.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class SpoolTest : public FolderTest {
 protected:
  static std::string text(const Spool& spool, const Spool::Piece& piece) {
    std::string result;
    readPiece(spool, piece, [&](std::string_view bytes) { result += bytes; });
    return result;
  }
};

TEST_F(SpoolTest, PiecesComeBackAsTheyWere) {
  Spool spool(folder());
  const Spool::Piece first = spool.append("one");
  const Spool::Piece empty = spool.append("");
  const Spool::Piece second = spool.append("second");
  EXPECT_EQ(text(spool, second), "second");
  EXPECT_EQ(text(spool, first), "one");
  EXPECT_EQ(text(spool, empty), "");
  EXPECT_EQ(spool.size(), 9U);
}

TEST_F(SpoolTest, LongPiecesAreReadInBlocks) {
  Spool spool(folder());
  std::string longText;
  for (int i = 0; i < 30000; ++i) longText += std::to_string(i);
  std::size_t blocks = 0;
  const Spool::Piece piece = spool.append(longText);
  readPiece(spool, piece, [&](std::string_view bytes) {
    EXPECT_LE(bytes.size(), 16384U);
    ++blocks;
  });
  EXPECT_GT(blocks, 5U);
  EXPECT_EQ(text(spool, piece), longText);
}

TEST_F(SpoolTest, TheFileHasNoName) {
  Spool spool(folder());
  spool.append("text");
  EXPECT_TRUE(files().empty());
}

TEST_F(SpoolTest, CuttingGivesRoomBack) {
  Spool spool(folder());
  spool.append("one");
  spool.append("two");
  spool.cutTo(3);
  EXPECT_EQ(spool.size(), 3U);
  EXPECT_EQ(text(spool, spool.append("2")), "2");
  EXPECT_EQ(text(spool, {0, 4}), "one2");
}

TEST_F(SpoolTest, AFolderThatTakesNoFilesIsSaid) {
  try {
    const Spool spool(path("missing"));
    ADD_FAILURE() << "made";
  } catch (const OutputError& error) {
    EXPECT_NE(std::string(error.what()).find("no temporary file in " + path("missing")), std::string::npos);
  }
}

TEST_F(SpoolTest, ReadingWhatIsNotThereFails) {
  const Spool spool(folder());
  char byte = 0;
  EXPECT_THROW(spool.read(0, &byte, 1), OutputError);
}

}  // namespace
}  // namespace quillpress::cli
