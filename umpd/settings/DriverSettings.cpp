#include "umpd/settings/DriverSettings.h"

#include "umpd/rules/DefaultSettings.h"
#include "umpd/rules/SettingText.h"
#include "umpd/settings/Registry.h"
#include "umpd/win32/Diagnostics.h"
#include "umpd/win32/SystemInformation.h"

namespace quillpress::driver {
namespace {
constexpr wchar_t kPrinterNameValue[] = L"printerName";

void reportFullMap() {
  writeDriverDebugOutput("Help!! too many parms \n");
}

// The defaults for the calling user, whose folder for output files is made if need be.
std::vector<DefaultSetting> usersDefaultSettings() {
  const DefaultFolders folders{applicationDataFolder(), documentsFolder(),
                               installedFile(L"twsview.exe").value_or(std::wstring())};
  // It may exist, in which case the call fails; what matters shows when the first file is created.
  if (!folders.applicationData.empty())
    CreateDirectoryW(defaultSaveFolder(folders.applicationData).c_str(), nullptr);
  return defaultSettings(folders);
}
}  // namespace

void DriverSettings::resetPrinterName() {
  // The values of another printer must not answer for the one that is named next.
  map_.clear();
  naming_ = {readGlobalPrinterName(), {}};
  if (naming_.printerName.empty()) naming_.printerName = kDefaultPrinterName;
}

// The printer that the user's settings are for when a job names none.
std::wstring DriverSettings::readGlobalPrinterName() {
  const UserRoot root(KEY_QUERY_VALUE, user_);
  if (!root) return {};
  const RegistryKey key = openKey(root.key(), kProductKey, KEY_QUERY_VALUE);
  if (!key) return {};
  return readText(key.get(), kPrinterNameValue).value_or(std::wstring());
}

void DriverSettings::setPrinterName(std::wstring_view name) {
  if (name.empty()) {
    resetPrinterName();
    return;
  }
  naming_ = {std::wstring(name), {}};
  // Only then: the search lists every printer and connection, which takes a network a while.
  if (!isPortStyle(name)) return;
  const std::optional<std::wstring> found = findPrinterOnPort(naming_.printerName);
  // Both, so that the settings and the launcher's messages go by the name that users know.
  if (found) naming_ = {*found, *found};
}

bool DriverSettings::openPrinter() {
  // The right to use it is all that printing users have; more would be refused to them.
  if (!printer_) printer_ = quillpress::driver::openPrinter(naming_.effectiveName(), PRINTER_ACCESS_USE);
  return static_cast<bool>(printer_);
}

std::wstring DriverSettings::printerKeyPath() const {
  return kProductKey + naming_.keyName();
}

RegistryKey DriverSettings::openPrinterKey(REGSAM access) {
  const UserRoot root(access, user_);
  if (!root) return RegistryKey();
  bool isNew = false;
  RegistryKey key = openOrCreateKey(root.key(), printerKeyPath(), access, &isNew);
  // The key itself tells the first use of a printer: settings that a user has deleted do not come back.
  if (isNew) writeDefaults(root.key());
  return key;
}

void DriverSettings::load() {
  const RegistryKey key = openPrinterKey(KEY_QUERY_VALUE);
  unsigned refused = 0;
  // Without a key the map stays as the ini file has left it.
  if (key) readAllValues(key.get(), map_, refused);
  for (; refused > 0; --refused) reportFullMap();
}

void DriverSettings::applyIniOverride() {
  const IniFile file;
  if (!file.overridesUserSettings()) return;
  // Without a key the file's settings hold for this job all the same.
  const RegistryKey key = openPrinterKey(KEY_SET_VALUE);
  // What holds for all printers comes first, so that the printer's own section has the last word.
  copyIniSection(file, L"init", key.get());
  copyIniSection(file, naming_.keyName(), key.get());
}

int DriverSettings::getInt(std::wstring_view name, int defaultValue) const {
  return map_.findInteger(name).value_or(defaultValue);
}

const std::wstring* DriverSettings::findFitting(std::wstring_view name, std::size_t bufferSize) const {
  const std::wstring* value = map_.find(name);
  // The final zero needs a place too, so a value as long as the buffer does not fit.
  return value != nullptr && !value->empty() && value->size() < bufferSize ? value : nullptr;
}

std::wstring DriverSettings::getString(std::wstring_view name, std::size_t bufferSize,
                                       std::wstring_view defaultValue) const {
  const std::wstring* value = findFitting(name, bufferSize);
  return value != nullptr ? *value : std::wstring(defaultValue);
}

void DriverSettings::setInt(const std::wstring& name, int value) {
  const RegistryKey key = openPrinterKey(KEY_SET_VALUE);
  if (key) storeInt(key.get(), name, value);
}

void DriverSettings::setString(const std::wstring& name, const std::wstring& value) {
  const RegistryKey key = openPrinterKey(KEY_SET_VALUE);
  if (key) storeString(key.get(), name, value);
}

// What the registry has not taken would be gone with the job, so it does not count during the job either.

void DriverSettings::storeInt(HKEY key, const std::wstring& name, int value) {
  if (writeNumber(key, name, value) && !map_.setInteger(name, value)) reportFullMap();
}

void DriverSettings::storeString(HKEY key, const std::wstring& name, const std::wstring& value) {
  if (writeText(key, name, value)) remember(name, value);
}

bool DriverSettings::writeDriverConfigFile() const {
  const std::wstring folder = systemFolder();
  if (folder.empty()) return false;
  const std::wstring path = folder + L"\\twscfg.1";
  // Made anew with each job: settings that are no longer wanted must not survive in it.
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  const std::wstring text = driverConfigText(map_);
  const DWORD size = static_cast<DWORD>(text.size()) * sizeof(wchar_t);
  DWORD written = 0;
  return WriteFile(file.get(), text.data(), size, &written, nullptr) != 0 && written == size;
}

// The printer's key has just been made, perhaps for reading only. It is opened once more for writing, below
// the same root: to find another may take long.
void DriverSettings::writeDefaults(HKEY root) {
  // The printer that was taken into use last is the one that jobs without a name belong to.
  const RegistryKey global = openOrCreateKey(root, kProductKey, KEY_SET_VALUE);
  if (global) writeText(global.get(), kPrinterNameValue, naming_.effectiveName());
  const RegistryKey key = openOrCreateKey(root, printerKeyPath(), KEY_SET_VALUE);
  if (key) {
    for (const DefaultSetting& setting : usersDefaultSettings()) {
      if (setting.text) {
        storeString(key.get(), setting.name, *setting.text);
      } else {
        storeInt(key.get(), setting.name, setting.number);
      }
    }
  }
  const IniFile file;
  copyIniSection(file, L"init", key.get());
  // Kept: a network printer's section goes by its name here, and by the name of its key in the override
  // (DefaultsTest.TakeTheIniSectionByTheNameOfThePrinterAsItStands).
  copyIniSection(file, naming_.effectiveName(), key.get());
}

// In the registry a value of digits becomes a number; here it stays as the file has it until the next load.
void DriverSettings::copyIniSection(const IniFile& file, const std::wstring& section, HKEY key) {
  for (const IniFile::Setting& line : file.section(section)) {
    remember(line.name, line.value);
    if (key == nullptr) continue;
    if (isDecimalNumber(line.value)) {
      writeNumber(key, line.name, toInteger(line.value));
    } else {
      writeText(key, line.name, line.value);
    }
  }
}

void DriverSettings::remember(std::wstring_view name, std::wstring_view value) {
  if (!map_.set(name, value)) reportFullMap();
}
}  // namespace quillpress::driver
