#include <gtest/gtest.h>

#include "postscript/lib/interpreter/MemorySet.h"
#include "postscript/lib/pdf/PdfObjectList.h"

namespace quillpress {
namespace {

TEST(PdfObjectListTest, IsOneForTheProcess) {
  EXPECT_EQ(&PdfObjectList::ofProcess(), &PdfObjectList::ofProcess());
}

TEST(PdfObjectListTest, NumbersRunThroughAllPrefixes) {
  PdfObjectList list;
  EXPECT_EQ(list.create(PdfObjectKind::kImage, "/PSI")->name(), "/PSI1");
  EXPECT_EQ(list.create(PdfObjectKind::kPattern, "/PA")->name(), "/PA2");
  EXPECT_EQ(list.create(PdfObjectKind::kImage, "/PSI")->name(), "/PSI3");
  EXPECT_EQ(list.count(), 3U);
}

TEST(PdfObjectListTest, NumbersBeginAgainAfterClear) {
  PdfObjectList list;
  list.create(PdfObjectKind::kImage, "/PSI");
  list.clear();
  EXPECT_EQ(list.count(), 0U);
  EXPECT_EQ(list.create(PdfObjectKind::kPattern, "/PA")->name(), "/PA1");
}

TEST(PdfObjectListTest, FindsImagesByTheirBytes) {
  PdfObjectList list;
  list.createImage("/PSI", "abc");
  list.createImage("/PSI", "abd");
  list.createImage("/PSI", "abd");
  EXPECT_EQ(list.findImage("abc")->name(), "/PSI1");
  EXPECT_EQ(list.findImage("abd")->name(), "/PSI2");
  EXPECT_EQ(list.findImage("ab"), nullptr);
  EXPECT_EQ(list.findImage("abcd"), nullptr);
}

TEST(PdfObjectListTest, APatternIsNoImage) {
  PdfObjectList list;
  list.create(PdfObjectKind::kPattern, "/PA")->setData("abc");
  EXPECT_EQ(list.findImage("abc"), nullptr);
}

TEST(PdfObjectListTest, FindsPatternsByIdentity) {
  const MemorySet memory;
  PdfObjectList list;
  const Ref<DictionaryObject> dictionary = memory.newDictionary();
  list.create(PdfObjectKind::kImage, "/PSI");
  list.identifyPattern(*list.create(PdfObjectKind::kPattern, "/PA"), dictionary);
  list.identifyPattern(*list.create(PdfObjectKind::kPattern, "/PA"), dictionary);
  EXPECT_EQ(list.findPattern(*dictionary)->name(), "/PA2");
  const Ref<PostscriptObject> copy = dictionary->clone(0);
  EXPECT_EQ(list.findPattern(*as<DictionaryObject>(copy)), nullptr);
}

TEST(PdfObjectListTest, AClearedListFindsNothing) {
  const MemorySet memory;
  PdfObjectList list;
  const Ref<DictionaryObject> dictionary = memory.newDictionary();
  list.createImage("/PSI", "abc");
  list.identifyPattern(*list.create(PdfObjectKind::kPattern, "/PA"), dictionary);
  list.clear();
  EXPECT_EQ(list.findImage("abc"), nullptr);
  EXPECT_EQ(list.findPattern(*dictionary), nullptr);
  list.createImage("/PSI", "abc");
  EXPECT_EQ(list.findImage("abc")->name(), "/PSI1");
}

TEST(PdfObjectListTest, SnapshotHoldsTheRecordsInOrder) {
  PdfObjectList list;
  list.create(PdfObjectKind::kImage, "/PSI");
  list.create(PdfObjectKind::kPattern, "/PA");
  ::PdfObject** records = list.snapshot();
  EXPECT_STREQ(records[0]->name, "/PSI1");
  EXPECT_STREQ(records[1]->name, "/PA2");
}

TEST(PdfObjectListTest, SnapshotOfAnEmptyListIsNoNullPointer) {
  PdfObjectList list;
  EXPECT_NE(list.snapshot(), nullptr);
  list.create(PdfObjectKind::kImage, "/PSI");
  list.clear();
  EXPECT_NE(list.snapshot(), nullptr);
}

TEST(PdfObjectListTest, ASharedObjectSurvivesClear) {
  PdfObjectList list;
  const auto object = list.create(PdfObjectKind::kPattern, "/PA");
  list.clear();
  object->setData("late");
  EXPECT_EQ(object->data(), "late");
}

}  // namespace
}  // namespace quillpress
