#include "umpd/metadata/DocumentInfo.h"

#include "umpd/win32/Text.h"

namespace quillpress {

XmpContent xmpContentOf(const DocumentInfo& info, std::wstring_view documentName, std::wstring_view now) {
  XmpContent content;
  // Kept: switching the information off hides title and author, but not subject and keywords.
  if (info.enable != 0) {
    content.title = info.title;
    content.author = info.author;
  }
  if (content.title.empty()) content.title = lastComponent(documentName, L"\\/");
  content.subject = info.subject;
  content.keywords = info.keywords;
  // Kept: creator, producer and dates of the settings are not used.
  content.creatorTool = L"Quillpress";
  content.producer = L"Quillpress";
  content.createDate = now;
  content.modifyDate = now;
  return content;
}

}  // namespace quillpress
