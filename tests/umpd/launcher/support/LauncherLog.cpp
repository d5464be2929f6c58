#include "tests/umpd/launcher/support/LauncherLog.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <sstream>

#include "tests/umpd/launcher/support/TemporaryFolder.h"

namespace quillpress::harness {
namespace {

std::wstring fromUtf8(const std::string& bytes) {
  if (bytes.empty()) return {};
  const int size = static_cast<int>(bytes.size());
  std::wstring text(bytes.size(), L'\0');
  const int length =
      MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, text.data(), size);
  EXPECT_GT(length, 0) << "the log is not UTF-8";
  text.resize(static_cast<std::size_t>(length));
  return text;
}

}  // namespace

std::vector<std::vector<std::wstring>> readLauncherLog(const std::wstring& path) {
  std::vector<std::vector<std::wstring>> lines;
  std::wistringstream log(fromUtf8(readFile(path)));
  for (std::wstring line; std::getline(log, line);) {
    std::vector<std::wstring>& fields = lines.emplace_back();
    std::size_t start = 0;
    for (std::size_t tab = line.find(L'\t'); tab != std::wstring::npos; tab = line.find(L'\t', start)) {
      fields.push_back(line.substr(start, tab - start));
      start = tab + 1;
    }
    fields.push_back(line.substr(start));
  }
  return lines;
}

}  // namespace quillpress::harness
