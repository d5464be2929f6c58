#include "umpd/rules/LauncherStruct.h"

#include <algorithm>

namespace quillpress::driver {
namespace {
// Writes the text and its final zero, and nothing behind.
void copyText(LauncherText& field, std::string_view text) {
  const std::string_view part = text.substr(0, field.size() - 1);
  *std::copy(part.begin(), part.end(), field.begin()) = '\0';
}

void clearAndCopyText(LauncherText& field, std::string_view text) {
  field.fill('\0');
  copyText(field, text);
}
}  // namespace

void writeStartPrint(LauncherStruct& record, std::string_view printerName) {
  clearAndCopyText(record.printerName, printerName);
  // The command comes last, so that it never stands above fields that are still being filled. Kept: path and
  // document name stay as before (LauncherStructTest.StartPrintKeepsPathAndDocumentOfTheFormerMessage).
  copyText(record.command, kStartPrint);
}

void writeStopPrint(LauncherStruct& record, std::string_view printerName, std::string_view documentName,
                    std::string_view outputPath) {
  clearAndCopyText(record.printerName, printerName);
  clearAndCopyText(record.outputPath, outputPath);
  clearAndCopyText(record.documentName, documentName);
  copyText(record.command, kStopPrint);
}

ChannelNames channelNames(std::wstring_view sessionPrefix, std::wstring_view channel,
                          std::wstring_view userName) {
  std::wstring base(sessionPrefix);
  // The prefix keeps the sessions of one user apart, the name the users of one session.
  base.append(channel).append(L"_").append(userName);
  return {base + L"_event", base + L"_event_end", base + L"_mutex", base + L"_sm"};
}
}  // namespace quillpress::driver
