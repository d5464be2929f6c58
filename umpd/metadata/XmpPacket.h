#pragma once

#include <string>

namespace quillpress {

// What an XMP packet says of a document. Empty texts are left out.
struct XmpContent {
  std::wstring title;
  std::wstring author;
  std::wstring subject;
  std::wstring keywords;
  std::wstring creatorTool;
  std::wstring producer;
  std::wstring createDate;  // as formatXmpDate writes it
  std::wstring modifyDate;
};

// The packet, which declares PDF/A-1b. Lines end with a line feed.
std::wstring xmpPacket(const XmpContent& content);

}  // namespace quillpress
