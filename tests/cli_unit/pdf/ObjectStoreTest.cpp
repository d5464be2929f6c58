#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/pdf/ObjectStore.h"
#include "tests/cli_unit/TemporaryFolder.h"
#include "tests/cli_unit/pdf/RecordFixture.h"

namespace quillpress::cli {
namespace {

class ObjectStoreTest : public FolderTest {
 protected:
  std::string keepSaying(const ObjectUses& uses) {
    testing::internal::CaptureStderr();
    store_.keep(uses, records_.list());
    return testing::internal::GetCapturedStderr();
  }

  Records records_;
  Spool spool_{folder()};
  Deflater deflater_;
  SpoolWorker worker_{spool_};
  ObjectStore store_{worker_, deflater_};
};

TEST_F(ObjectStoreTest, OnlyWhatIsUsedIsKept) {
  records_.addImage(kGrayImage, "abcd");
  records_.addImage(kGrayImage, "efgh");
  store_.keep({2}, records_.list());
  EXPECT_FALSE(store_.has(1));
  ASSERT_TRUE(store_.has(2));
  EXPECT_EQ(store_.objects().at(2).name, "/PSI2");
  EXPECT_FALSE(store_.objects().at(2).isPattern);
  EXPECT_EQ(worker_.finish().size(), 1U);
}

TEST_F(ObjectStoreTest, AnObjectIsKeptOnce) {
  records_.addImage(kGrayImage, "abcd");
  store_.keep({1}, records_.list());
  store_.keep({1}, records_.list());
  EXPECT_EQ(worker_.finish().size(), 1U);
}

TEST_F(ObjectStoreTest, APatternBringsWhatItDraws) {
  records_.addImage(kGrayImage, "abcd");
  records_.addPattern(kCell, "q /PSI1 Do Q ");
  store_.keep({2}, records_.list());
  EXPECT_TRUE(store_.has(1));
  EXPECT_TRUE(store_.objects().at(2).isPattern);
  EXPECT_TRUE(store_.objects().at(2).objects.contains(1));
}

TEST_F(ObjectStoreTest, APatternWhoseMatrixIsLeftOpenIsLeftOut) {
  records_.addPattern("/Matrix [\n" + kCell, "1 w");
  const std::string said = keepSaying({1});
  EXPECT_NE(said.find("/PA1 is left out, as its dictionary is broken: "), std::string::npos) << said;
  EXPECT_TRUE(store_.objects().at(1).isBroken);
}

TEST_F(ObjectStoreTest, ANumberThatNobodyHasIsPassedOver) {
  store_.keep({7}, records_.list());
  EXPECT_TRUE(store_.objects().empty());
}

TEST_F(ObjectStoreTest, DataWithAFilterOfItsOwnAreStoredAsTheyAre) {
  records_.addImage(kGrayImage + " /Filter /ASCIIHexDecode", "61626364>", false);
  store_.keep({1}, records_.list());
  const auto pieces = worker_.finish();
  ASSERT_EQ(pieces.size(), 1U);
  EXPECT_EQ(pieces[0].length, 9U);
}

TEST_F(ObjectStoreTest, ABrokenOneIsLeftOutAndSaid) {
  records_.addImage("/Width (open", "abcd");
  const std::string said = keepSaying({1});
  EXPECT_NE(said.find("/PSI1 is left out, as its dictionary is broken: "), std::string::npos) << said;
  EXPECT_TRUE(store_.objects().at(1).isBroken);
  EXPECT_EQ(keepSaying({1}), "");
}

TEST_F(ObjectStoreTest, AnInfiniteOneFailsEachPageThatUsesIt) {
  records_.addPattern(kCell + " /Matrix [inf 0 0 1 0 0]", "1 w");
  for (int page = 0; page < 2; ++page) EXPECT_THROW(store_.keep({1}, records_.list()), PageError);
  EXPECT_FALSE(store_.has(1));
}

TEST_F(ObjectStoreTest, APatternThatDrawsAnInfiniteOneFailsToo) {
  records_.addPattern(kCell, "1000000000000000000000 w");
  records_.addPattern(kCell, "/PA1 scn");
  for (int page = 0; page < 2; ++page) EXPECT_THROW(store_.keep({2}, records_.list()), PageError);
  EXPECT_FALSE(store_.has(2));
}

}  // namespace
}  // namespace quillpress::cli
