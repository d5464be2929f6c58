#include "umpd/rules/DefaultSettings.h"

namespace quillpress::driver {
namespace {
DefaultSetting number(const wchar_t* name, int value) {
  return {name, value, std::nullopt};
}

DefaultSetting text(const wchar_t* name, std::wstring value) {
  return {name, 0, std::move(value)};
}
}  // namespace

std::wstring defaultSaveFolder(const std::wstring& applicationData) {
  // A service without a user's profile has no such folder; the root of the disk can at least be named.
  return applicationData.empty() ? L"c:\\" : applicationData + L"\\Quillpress";
}

std::vector<DefaultSetting> defaultSettings(const DefaultFolders& folders) {
  const std::wstring saveFolder = defaultSaveFolder(folders.applicationData);
  std::vector<DefaultSetting> settings = {
      number(L"NextAction", 3),
      number(L"SaveFilenameAction", 3),
      text(L"DefaultSaveDir", saveFolder),
      text(L"LastDir", folders.documents.empty() ? saveFolder : folders.documents),
  };
  // The launcher puts the output path and the document name into the placeholders.
  if (!folders.viewer.empty()) {
    settings.push_back(text(L"ExecCmdLine", folders.viewer + L" -nav=\"%s\" -docname=\"%s\""));
  }
  settings.insert(settings.end(), {
                                      text(L"DefaultSaveFilename", L"tmp.pdf"),
                                      number(L"resIndex", 3),
                                      number(L"jpegImageQuality", 75),
                                      number(L"imageDPI", 300),
                                      number(L"TrimNameChar", L'-'),
                                      number(L"showStashelButton", 0),
                                  });
  return settings;
}
}  // namespace quillpress::driver
