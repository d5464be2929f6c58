#include <gtest/gtest.h>

#include "postscript/lib/objects/Ref.h"

namespace quillpress {
namespace {

// Tells when it is deleted.
class Watched final : public PostscriptObject {
 public:
  explicit Watched(int& deletions) : PostscriptObject(TypeCode::kNull), deletions_(deletions) {}
  ~Watched() override { ++deletions_; }
  [[nodiscard]] Ref<PostscriptObject> clone(int /*argument*/) const override { return nullptr; }

 private:
  int& deletions_;
};

TEST(RefTest, TheLastReferenceDeletes) {
  int deletions = 0;
  {
    const auto first = make<Watched>(deletions);
    EXPECT_EQ(first->refCount, 1);
    {
      const auto second = first;
      EXPECT_EQ(first->refCount, 2);
    }
    EXPECT_EQ(first->refCount, 1);
    EXPECT_EQ(deletions, 0);
  }
  EXPECT_EQ(deletions, 1);
}

TEST(RefTest, MovingKeepsTheCount) {
  int deletions = 0;
  auto first = make<Watched>(deletions);
  const Ref<PostscriptObject> second = std::move(first);
  EXPECT_EQ(second->refCount, 1);
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): a moved Ref is empty
}

TEST(RefTest, AssigningReleasesTheOldObject) {
  int deletions = 0;
  auto reference = make<Watched>(deletions);
  reference = make<Watched>(deletions);
  EXPECT_EQ(deletions, 1);
  reference = nullptr;
  EXPECT_EQ(deletions, 2);
}

TEST(RefTest, AssigningItselfKeepsTheObject) {
  int deletions = 0;
  auto reference = make<Watched>(deletions);
  const auto& same = reference;
  reference = same;
  EXPECT_EQ(deletions, 0);
  EXPECT_EQ(reference->refCount, 1);
}

TEST(RefTest, LeakAndAdoptPassTheReferenceOn) {
  int deletions = 0;
  auto reference = make<Watched>(deletions);
  Watched* object = reference.leak();
  EXPECT_EQ(object->refCount, 1);
  EXPECT_EQ(deletions, 0);
  const auto adopted = Ref<Watched>::adopt(object);
  EXPECT_EQ(adopted->refCount, 1);
}

TEST(RefTest, AnExceptionReleases) {
  int deletions = 0;
  try {
    const auto reference = make<Watched>(deletions);
    throw 1;
  } catch (int) {
    EXPECT_EQ(deletions, 1);
  }
}

}  // namespace
}  // namespace quillpress
