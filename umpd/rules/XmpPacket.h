#pragma once

#include <ctime>
#include <string>
#include <string_view>

namespace quillpress::driver {
// The text as it stands in XML content and in attribute values of either quote.
std::wstring xmlEscape(std::wstring_view text);

// A local time in the form of ISO 8601 with its offset: "2009-02-13T23:31:30+01:00". The bias is UTC less
// local time, in minutes. Empty when the time cannot be written.
std::wstring formatXmpDate(const std::tm& localTime, long biasMinutes);

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

// What the user wants documents of a printer to say of themselves.
struct DocumentInfo {
  int enable = 0;
  std::wstring title;
  std::wstring author;
  std::wstring subject;
  std::wstring keywords;
  std::wstring creator;
  std::wstring producer;
  std::wstring creationDate;
  std::wstring modDate;
};

// What the packet of a document says. A document without a title is called by the last component of its
// name. Both dates are `now`.
XmpContent xmpContentOf(const DocumentInfo& info, std::wstring_view documentName, std::wstring_view now);
}  // namespace quillpress::driver
