#pragma once

#include <string>
#include <string_view>

namespace quillpress::driver {
// The family and version of Windows, and what the front end makes depend on them.
struct WindowsVersion {
  bool isNtFamily = true;  // false: the 9x family
  unsigned major = 5;

  [[nodiscard]] bool is9x() const { return !isNtFamily; }
  [[nodiscard]] bool isNt4() const { return isNtFamily && major == 4; }

  // Kernel objects have namespaces, sessions come with them.
  [[nodiscard]] bool hasNamespaces() const { return major >= 5; }

  // Processes and objects carry integrity labels.
  [[nodiscard]] bool hasIntegrityLabels() const { return isNtFamily && major > 5; }

  // What the name of an object of this session begins with.
  [[nodiscard]] std::wstring_view sessionPrefix() const { return hasNamespaces() ? L"Local\\" : L""; }

  // What the name of an object of the whole machine begins with.
  [[nodiscard]] std::wstring_view machinePrefix() const { return hasNamespaces() ? L"Global\\" : L""; }

  // From the spooler's driver folder to the files of the driver: version 2 or 3 of the driver interface.
  [[nodiscard]] std::wstring_view driverSubfolder() const {
    if (is9x()) return L"\\";
    return major >= 5 ? L"\\3\\" : L"\\2\\";
  }
};

// The Windows that this process runs on, asked anew by every call.
WindowsVersion windowsVersion();

// The operating system's explanation of an error code, in the default language and with its final line
// break; "Error string not found" when it has none.
std::wstring systemMessage(unsigned long errorCode);

// The calling user's name, at most 259 characters; empty when the system does not tell.
std::wstring userName();

// The folder of the system's own libraries, without a final backslash; empty when it cannot be had.
std::wstring systemFolder();

// Folders of the calling user, as the shell names them; empty when the shell does not know one.

std::wstring documentsFolder();

// The local application data; the roaming one where there is no local one.
std::wstring applicationDataFolder();

// Conversions between wide text and text in the system's ANSI code page. Characters that the code page
// lacks become its substitute; what cannot be converted at all becomes the empty text.
std::string toAnsi(std::wstring_view text);
std::wstring fromAnsi(std::string_view text);
}  // namespace quillpress::driver
