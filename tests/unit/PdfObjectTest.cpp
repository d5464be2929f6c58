#include <gtest/gtest.h>

#include "postscript/lib/interpreter/MemorySet.h"
#include "postscript/lib/pdf/PdfObject.h"

namespace quillpress {
namespace {

TEST(PdfObjectTest, NewRecordIsEmptyButForItsNameAndKind) {
  OwnedPdfObject object(PdfObjectKind::kImage, "/PSI7");
  const ::PdfObject& record = object.record();
  EXPECT_STREQ(record.dictionary, "");
  EXPECT_EQ(record.reserved[0], 0U);
  EXPECT_EQ(record.reserved[1], 0U);
  EXPECT_EQ(record.compress, 1);
  EXPECT_EQ(record.data, nullptr);
  EXPECT_EQ(record.dataLength, 0U);
  EXPECT_STREQ(record.name, "/PSI7");
  EXPECT_EQ(record.kind, 3);
  EXPECT_EQ(record.patternDictionary, nullptr);
  EXPECT_EQ(record.reservedPointer, nullptr);
  EXPECT_STREQ(record.content, "");
  EXPECT_FALSE(object.hasData());
}

TEST(PdfObjectTest, KindsAreTheContract) {
  EXPECT_EQ(OwnedPdfObject(PdfObjectKind::kPattern, "/PA1").record().kind, 1);
  EXPECT_EQ(OwnedPdfObject(PdfObjectKind::kImage, "/PSI1").record().kind, 3);
  EXPECT_EQ(PDF_OBJECT_PATTERN, 1);
  EXPECT_EQ(PDF_OBJECT_IMAGE, 3);
}

TEST(PdfObjectTest, RecordShowsWhatIsSet) {
  OwnedPdfObject object(PdfObjectKind::kImage, "/PSI1");
  object.setDictionary("/Type /XObject");
  object.setData(std::string("a\0b", 3));
  object.setCompress(false);
  EXPECT_STREQ(object.record().dictionary, "/Type /XObject");
  EXPECT_EQ(std::string(object.record().data, object.record().dataLength), std::string("a\0b", 3));
  EXPECT_EQ(object.record().compress, 0);
  EXPECT_TRUE(object.hasData());
  object.setCompress(true);
  EXPECT_EQ(object.record().compress, 1);
}

TEST(PdfObjectTest, EmptyDataIsDataToo) {
  OwnedPdfObject object(PdfObjectKind::kPattern, "/PA1");
  object.setData("");
  EXPECT_TRUE(object.hasData());
  EXPECT_EQ(object.record().dataLength, 0U);
}

TEST(PdfObjectTest, PatternDictionaryIsHeldByTheObject) {
  const MemorySet memory;
  OwnedPdfObject object(PdfObjectKind::kPattern, "/PA1");
  {
    const Ref<DictionaryObject> dictionary = memory.newDictionary();
    object.keepPatternDictionary(dictionary);
    EXPECT_EQ(object.record().patternDictionary, dictionary.get());
  }
  EXPECT_EQ(static_cast<DictionaryObject*>(object.record().patternDictionary)->refCount, 1);
}

}  // namespace
}  // namespace quillpress
