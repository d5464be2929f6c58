#include <windows.h>
// After windows.h.
#include <psapi.h>

#include <array>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "bench/printing/Benchmarks.h"
#include "bench/printing/Check.h"
#include "bench/printing/DriverLibrary.h"
#include "bench/printing/Printer.h"
#include "bench/printing/Rounds.h"

namespace {

constexpr DWORD kBlock = 64 * 1024;
constexpr unsigned kMegabyte = 1024 * 1024;
// The job and the bare loop take turns of this size, so that a slow moment of the machine meets both.
constexpr unsigned kTurn = 4 * kMegabyte;

std::vector<char> postscript() {
  static const std::string line = "100 200 moveto 300 400 lineto stroke\n";
  std::vector<char> block;
  while (block.size() < kBlock) block.insert(block.end(), line.begin(), line.end());
  block.resize(kBlock);
  return block;
}

double peakMegabytes() {
  PROCESS_MEMORY_COUNTERS counters{};
  check(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) != 0, "GetProcessMemoryInfo");
  return static_cast<double>(counters.PeakWorkingSetSize) / kMegabyte;
}

unsigned long long sizeOf(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  check(GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) != 0, "GetFileAttributesEx");
  return (static_cast<unsigned long long>(data.nFileSizeHigh) << 32) + data.nFileSizeLow;
}

// One way to write a file. Its clock runs only while it works.
class Way {
 public:
  Way() = default;
  Way(const Way&) = delete;
  Way& operator=(const Way&) = delete;
  virtual ~Way() = default;

  void begin() {
    taken_ += seconds([&] { open(); });
  }

  void turn(const std::vector<char>& block) {
    taken_ += seconds([&] {
      for (unsigned done = 0; done < kTurn; done += kBlock) write(block.data());
    });
  }

  void end() {
    taken_ += seconds([&] { close(); });
  }

  [[nodiscard]] double taken() const { return taken_; }

 private:
  virtual void open() = 0;
  virtual void write(const char* block) = 0;
  virtual void close() = 0;

  double taken_ = 0;
};

class Job final : public Way {
 public:
  Job(const DriverLibrary& library, Printer& printer) : library_(library), printer_(printer) {}

 private:
  void open() override {
    job_ = library_.docStart2K(printer_.handle(), 0, printer_.name().data(), nullptr);
    check(job_ != 0, "DocStart2K");
  }

  void write(const char* block) override { check(library_.docWrite(job_, block, kBlock) == 1, "DocWrite"); }
  void close() override { check(library_.docEnd(job_) == 1, "DocEnd"); }

  const DriverLibrary& library_;
  Printer& printer_;
  unsigned long job_ = 0;
};

class BareFile : public Way {
 public:
  explicit BareFile(std::wstring path) : path_(std::move(path)) {}

 protected:
  void write(const char* block) override {
    DWORD written = 0;
    check(WriteFile(file_, block, kBlock, &written, nullptr) != 0 && written == kBlock, "WriteFile");
  }

 private:
  void open() override {
    file_ = CreateFileW(path_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                        FILE_ATTRIBUTE_NORMAL, nullptr);
    check(file_ != INVALID_HANDLE_VALUE, "CreateFile");
  }

  void close() override { CloseHandle(file_); }

  std::wstring path_;
  HANDLE file_ = INVALID_HANDLE_VALUE;
};

// The jobs of a machine take turns, block by block: what is left of the difference is the driver's own.
class GuardedFile final : public BareFile {
 public:
  explicit GuardedFile(std::wstring path)
      : BareFile(std::move(path)), mutex_(CreateMutexW(nullptr, FALSE, L"Global\\quillpress_printing")) {
    check(mutex_ != nullptr, "CreateMutex");
  }

  ~GuardedFile() override { CloseHandle(mutex_); }

 private:
  void write(const char* block) override {
    check(WaitForSingleObject(mutex_, INFINITE) == WAIT_OBJECT_0, "WaitForSingleObject");
    BareFile::write(block);
    ReleaseMutex(mutex_);
  }

  HANDLE mutex_;
};

struct Round {
  double job;
  double bare;
  double guarded;
};

Round writeAll(const DriverLibrary& library, Printer& printer, unsigned megabytes,
               const std::vector<char>& block) {
  const std::wstring folder = printer.text(L"DefaultSaveDir");
  const std::wstring barePath = folder + L"bare.ps";
  const std::wstring guardedPath = folder + L"guarded.ps";
  Job job(library, printer);
  BareFile bare(barePath);
  GuardedFile guarded(guardedPath);
  const std::array<Way*, 3> ways = {&job, &bare, &guarded};

  for (Way* way : ways) way->begin();
  for (unsigned done = 0; done < megabytes * kMegabyte; done += kTurn) {
    for (Way* way : ways) way->turn(block);
  }
  for (Way* way : ways) way->end();

  const std::wstring jobPath = printer.text(L"lastfile");
  check(sizeOf(jobPath) == sizeOf(barePath), "the comparison of the files' sizes");
  for (const std::wstring& path : {jobPath, barePath, guardedPath}) DeleteFileW(path.c_str());
  return {job.taken(), bare.taken(), guarded.taken()};
}

}  // namespace

void measureWriting(Printer& printer, int rounds, unsigned megabytes) {
  const DriverLibrary library;
  const std::vector<char> block = postscript();
  // What any job takes is not what a long one takes.
  static_cast<void>(writeAll(library, printer, kTurn / kMegabyte, block));

  const double before = peakMegabytes();
  std::vector<double> ratios;
  std::vector<double> guardedRatios;
  for (int round = 0; round < rounds; ++round) {
    const Round taken = writeAll(library, printer, megabytes, block);
    ratios.push_back(taken.bare / taken.job);
    guardedRatios.push_back(taken.guarded / taken.job);
    std::printf("%u MB   DocWrite %.3f s   WriteFile %.3f s   WriteFile under a mutex %.3f s\n", megabytes,
                taken.job, taken.bare, taken.guarded);
    std::fflush(stdout);
  }
  std::printf("throughput of DocWrite / WriteFile                %.3f\n", median(ratios));
  std::printf("throughput of DocWrite / WriteFile under a mutex  %.3f\n", median(guardedRatios));
  std::printf("peak memory before and after  %.2f MiB, %.2f MiB\n", before, peakMegabytes());
}
