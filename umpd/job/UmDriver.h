#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "umpd/job/JobOutput.h"
#include "umpd/settings/DriverSettings.h"
#include "umpd/spooler/Printer.h"
#include "umpd/win32/NamedObjects.h"

namespace quillpress::driver {
// One print job, from its first byte to the hand-over of the finished file to the launcher. The jobs of all
// processes take turns: whatever touches the spooler, the settings or the file happens under one mutex of the
// machine.
class UmDriver {
 public:
  // What every job object carries as a sign of being one: the bytes "DSWT".
  static constexpr std::uint32_t kSignature = 0x54575344;

  enum StateFlag : std::uint32_t {
    kInitialised = 1,
    kEnded = 2,
    kAborted = 4,
    kWriteFailed = 8,
  };

  UmDriver();
  UmDriver(const UmDriver&) = delete;
  UmDriver& operator=(const UmDriver&) = delete;

  // A job that has not ended leaves what it has written and tells nobody.
  virtual ~UmDriver();

  // Takes the next block of the job. The first one chooses and creates the output file. Null data with a size
  // is a block that cannot be read: it fails, after the file has been made.
  virtual bool write(std::span<const std::byte> bytes);

  // Ends the document: closes the file, takes the job out of the queue and tells the launcher. The object is
  // reset and can only be destroyed after that.
  virtual bool endDoc();

  // Begins a job of the printer with this handle, or else with this name; both may be absent (null), and so
  // may the job's id (0). False, mostly after an error box, when the printer or its settings cannot be had.
  bool init(HANDLE printer, DWORD jobId, const wchar_t* printerName);

  [[nodiscard]] bool hasSignature() const { return signature_ == kSignature; }
  [[nodiscard]] std::uint32_t stateFlags() const { return stateFlags_; }
  void setStateFlag(StateFlag flag) { stateFlags_ |= flag; }

  [[nodiscard]] DriverSettings& settings() { return settings_; }
  [[nodiscard]] const std::wstring& documentName() const { return documentName_; }
  [[nodiscard]] const std::wstring& outputPath() const { return output_.path(); }
  [[nodiscard]] const std::wstring& userName() const { return userName_; }
  [[nodiscard]] std::uint32_t bytesWritten() const { return output_.bytesWritten(); }
  [[nodiscard]] DWORD jobId() const { return jobId_; }

 protected:
  // The name is cut to its field.
  void setDocumentName(std::wstring_view name);
  void setPrinter(HANDLE printer, DWORD jobId);
  void loadSettings();

  [[nodiscard]] NamedMutex& jobMutex() { return jobMutex_; }
  [[nodiscard]] std::wstring readPrinterName() { return printerInformation_.readName(queryPrinter_); }

 private:
  void reset();
  [[nodiscard]] bool openPrinterByName(const wchar_t* printerName);
  void writeConfigFileAsSpooler();
  void identifyDocument();

  [[nodiscard]] bool writeToPrinter(std::span<const std::byte> bytes);
  void finishSpooledJob();
  void handOver();

  DriverSettings settings_;
  HANDLE queryPrinter_ = nullptr;  // borrowed, from the caller or the settings
  PrinterInformation printerInformation_;
  std::uint32_t signature_ = kSignature;
  HANDLE jobPrinter_ = nullptr;  // borrowed from the caller
  DWORD jobId_ = 0;
  std::uint32_t stateFlags_ = 0;
  NamedMutex jobMutex_;
  JobOutput output_;
  std::wstring userName_;      // at most 259 characters
  std::wstring documentName_;  // at most 259
  bool passThrough_ = false;
};

// A job of the newer spooler interface, which tells the document's name.
class UmDriver2k final : public UmDriver {
 public:
  // Begins the job. False, after an error box, when the spooler does not know the printer.
  bool init(HANDLE printer, DWORD jobId, const wchar_t* documentName);
};
}  // namespace quillpress::driver
