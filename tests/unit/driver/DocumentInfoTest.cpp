#include <gtest/gtest.h>

#include "umpd/rules/XmpPacket.h"

namespace quillpress::driver {
namespace {

DocumentInfo everything(int enable) {
  return {enable, L"Title", L"Author", L"Subject", L"Keywords", L"A creator", L"A maker", L"2001", L"2002"};
}

TEST(DocumentInfoTest, IsEmptyAtFirst) {
  const DocumentInfo info;
  EXPECT_EQ(info.enable, 0);
  for (const std::wstring& text : {info.title, info.author, info.subject, info.keywords, info.creator,
                                   info.producer, info.creationDate, info.modDate}) {
    EXPECT_EQ(text, L"");
  }
}

TEST(DocumentInfoTest, SwitchedOnItsFourTextsAreUsed) {
  const XmpContent content = xmpContentOf(everything(1), L"C:\\doc", L"now");
  EXPECT_EQ(content.title, L"Title");
  EXPECT_EQ(content.author, L"Author");
  EXPECT_EQ(content.subject, L"Subject");
  EXPECT_EQ(content.keywords, L"Keywords");
}

TEST(DocumentInfoTest, AnyNumberButZeroSwitchesItOn) {
  EXPECT_EQ(xmpContentOf(everything(-1), L"doc", L"now").title, L"Title");
  EXPECT_EQ(xmpContentOf(everything(2), L"doc", L"now").author, L"Author");
}

TEST(DocumentInfoTest, SwitchedOffItHidesTitleAndAuthorOnly) {
  const XmpContent content = xmpContentOf(everything(0), L"doc", L"now");
  EXPECT_EQ(content.title, L"doc");
  EXPECT_EQ(content.author, L"");
  EXPECT_EQ(content.subject, L"Subject");
  EXPECT_EQ(content.keywords, L"Keywords");
}

TEST(DocumentInfoTest, WithoutTitleTheDocumentsNameIsOne) {
  const auto titleOf = [](const wchar_t* documentName) {
    DocumentInfo info;
    info.enable = 1;
    return xmpContentOf(info, documentName, L"now").title;
  };
  EXPECT_EQ(titleOf(L"Report.doc"), L"Report.doc");
  EXPECT_EQ(titleOf(L"C:\\Users\\u\\Report.doc"), L"Report.doc");
  EXPECT_EQ(titleOf(L"http://host/a/page"), L"page");
  EXPECT_EQ(titleOf(L"C:\\a/b"), L"b");
  EXPECT_EQ(titleOf(L"C:/a\\b"), L"b");
  EXPECT_EQ(titleOf(L"folder/"), L"");
  EXPECT_EQ(titleOf(L""), L"");
}

TEST(DocumentInfoTest, CreatorProducerAndDatesOfTheSettingsAreNotUsed) {
  const XmpContent content = xmpContentOf(everything(1), L"doc", L"2024-05-06T07:08:09Z");
  EXPECT_EQ(content.creatorTool, L"Quillpress");
  EXPECT_EQ(content.producer, L"Quillpress");
  EXPECT_EQ(content.createDate, L"2024-05-06T07:08:09Z");
  EXPECT_EQ(content.modifyDate, L"2024-05-06T07:08:09Z");
}

}  // namespace
}  // namespace quillpress::driver
