#pragma once

#include <string>
#include <string_view>

#include "umpd/metadata/XmpPacket.h"

namespace quillpress {

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

}  // namespace quillpress
