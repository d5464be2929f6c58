#pragma once

#include <string>
#include <string_view>

#include "umpd/rules/PrinterNaming.h"
#include "umpd/rules/StringMap.h"
#include "umpd/settings/Installation.h"
#include "umpd/spooler/Identity.h"
#include "umpd/spooler/Printer.h"
#include "umpd/win32/Resources.h"

namespace quillpress::driver {
// The settings of one printer, for one job: read from the current user's registry, where they get their
// defaults when the printer is used for the first time. An unreadable registry means no settings; every
// question then gets its default.
class DriverSettings {
 public:
  // Forgets the settings. The printer is the one that the registry names, else the product's own.
  void resetPrinterName();

  // An empty name resets. A name in the style of a port is that of the printer there; without such a
  // printer it is kept as it stands.
  void setPrinterName(std::wstring_view name);

  [[nodiscard]] const PrinterNaming& naming() const { return naming_; }

  // Opens the printer of these settings for use, unless they have it open. False, with the last error,
  // when the spooler refuses.
  bool openPrinter();
  [[nodiscard]] HANDLE printer() const { return printer_.get(); }

  // Replaces the settings by those in the registry.
  void load();

  // Lets the administrator's ini file replace settings, here and in the registry, if it wants to.
  void applyIniOverride();

  [[nodiscard]] int getInt(std::wstring_view name, int defaultValue) const;

  // The text as far as it is not empty and fits, with its final zero, into a buffer of `bufferSize`
  // characters.
  [[nodiscard]] std::wstring getString(std::wstring_view name, std::size_t bufferSize,
                                       std::wstring_view defaultValue) const;

  // Null when there is no such setting, or an empty one, or one that does not fit.
  [[nodiscard]] const std::wstring* findFitting(std::wstring_view name, std::size_t bufferSize) const;

  // Stores a setting in the registry and, if that succeeds, here.
  void setInt(const std::wstring& name, int value);
  void setString(const std::wstring& name, const std::wstring& value);

  // Writes the file that tells the rendering side of NT 4.0 its settings, as UTF-16 without mark and final
  // zero. False, with the last error,
  // when the file cannot be made or written.
  [[nodiscard]] bool writeDriverConfigFile() const;

  // Opens the printer's registry key, made and filled with defaults if need be; none when that fails.
  [[nodiscard]] RegistryKey openPrinterKey(REGSAM access);

  // The user for whom the job prints.
  [[nodiscard]] UserSid& user() { return user_; }

 private:
  [[nodiscard]] std::wstring readGlobalPrinterName();
  [[nodiscard]] std::wstring printerKeyPath() const;
  void writeDefaults(HKEY root);
  void copyIniSection(const IniFile& file, const std::wstring& section, HKEY key);
  void storeInt(HKEY key, const std::wstring& name, int value);
  void storeString(HKEY key, const std::wstring& name, const std::wstring& value);
  void remember(std::wstring_view name, std::wstring_view value);

  PrinterNaming naming_;
  UserSid user_;
  PrinterHandle printer_;
  StringMap map_;
};
}  // namespace quillpress::driver
