#include "umpd/metadata/PdfaXml.h"

#include "umpd/rules/XmpPacket.h"
#include "umpd/settings/Registry.h"

namespace quillpress::driver {
namespace {
// Other programs may store longer texts. They are cut, not left out: half a subject is better than none.
constexpr std::size_t kLongestText = 2000;

std::wstring readInfoText(HKEY key, const wchar_t* name) {
  return readText(key, name).value_or(std::wstring()).substr(0, kLongestText);
}

DocumentInfo readDocumentInfo(DriverSettings& settings) {
  DocumentInfo info;
  // Not from the job's map: the user may change the texts in the window that comes up while the job prints. A
  // value of the wrong kind means that the texts cannot be trusted either; an absent one is an ordinary 0.
  const RegistryKey key = settings.openPrinterKey(KEY_QUERY_VALUE);
  if (!key || readNumber(key.get(), L"DocInfoEnable", info.enable) == ReadResult::kFailed) return info;
  info.title = readInfoText(key.get(), L"DocInfoTitle");
  info.author = readInfoText(key.get(), L"DocInfoAuthor");
  info.subject = readInfoText(key.get(), L"DocInfoSubject");
  info.keywords = readInfoText(key.get(), L"DocInfoKeywords");
  info.creator = readInfoText(key.get(), L"DocInfoCreator");
  info.producer = readInfoText(key.get(), L"DocInfoProducer");
  info.creationDate = readInfoText(key.get(), L"DocInfoCreationDate");
  info.modDate = readInfoText(key.get(), L"DocInfoModDate");
  return info;
}

std::tm localTime() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  std::tm time{};
  // Converted by hand: the C library's localtime follows the variable TZ, which printing programs may set.
  time.tm_year = now.wYear - 1900;
  time.tm_mon = now.wMonth - 1;
  time.tm_mday = now.wDay;
  time.tm_hour = now.wHour;
  time.tm_min = now.wMinute;
  time.tm_sec = now.wSecond;
  return time;
}

// Kept: the standard bias only, so in summer the offset is that of the winter (RuleRowsTest.Dates).
long standardBias() {
  TIME_ZONE_INFORMATION zone{};
  GetTimeZoneInformation(&zone);
  return zone.Bias;
}
}  // namespace

std::wstring buildPdfaXml(DriverSettings& settings, std::wstring_view documentName) {
  const std::wstring now = formatXmpDate(localTime(), standardBias());
  return xmpPacket(xmpContentOf(readDocumentInfo(settings), documentName, now));
}
}  // namespace quillpress::driver
