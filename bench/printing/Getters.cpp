#include <array>
#include <cstdio>
#include <cstring>

#include "bench/printing/Benchmarks.h"
#include "bench/printing/Check.h"
#include "bench/printing/DriverLibrary.h"
#include "bench/printing/Printer.h"
#include "bench/printing/Rounds.h"

namespace {

constexpr int kTimes = 5000;
constexpr wchar_t kNumber[] = L"resIndex";
constexpr wchar_t kText[] = L"DefaultSaveFilename";

struct Getter {
  const char* name;
  std::vector<double> job;
  std::vector<double> registry;

  // Microseconds of one question. They take turns, and a slow moment of the machine meets both.
  template <typename AskJob, typename AskRegistry>
  void ask(AskJob askJob, AskRegistry askRegistry) {
    const auto each = [](auto question) {
      return 1e6 / kTimes * seconds([&] {
               for (int i = 0; i < kTimes; ++i) question();
             });
    };
    job.push_back(each(askJob));
    registry.push_back(each(askRegistry));
  }

  void report() const {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < job.size(); ++i) ratios.push_back(job[i] / registry[i]);
    std::printf("%-13s %9.3f us   RegQueryValueExW %9.3f us   ratio %.4f\n", name, median(job),
                median(registry), median(ratios));
  }
};

}  // namespace

void measureGetters(Printer& printer, int rounds) {
  const DriverLibrary library;
  const unsigned long job = library.docStart2K(printer.handle(), 0, printer.name().data(), nullptr);
  check(job != 0, "DocStart2K");

  Getter numbers{"getIntVal", {}, {}};
  Getter texts{"getStringVal", {}, {}};
  for (int round = 0; round < rounds; ++round) {
    numbers.ask([&] { check(library.intVal(job, kNumber, -1) != -1, "getIntVal"); },
                [&] {
                  DWORD value = 0;
                  DWORD size = sizeof value;
                  check(RegQueryValueExW(printer.settings(), kNumber, nullptr, nullptr,
                                         reinterpret_cast<BYTE*>(&value), &size) == ERROR_SUCCESS,
                        "RegQueryValueEx");
                });
    std::array<wchar_t, 260> text{};
    texts.ask(
        [&] { check(library.stringVal(job, kText, text.data(), text.size(), nullptr) == 1, "getStringVal"); },
        [&] {
          DWORD size = sizeof text;
          check(RegQueryValueExW(printer.settings(), kText, nullptr, nullptr,
                                 reinterpret_cast<BYTE*>(text.data()), &size) == ERROR_SUCCESS,
                "RegQueryValueEx");
        });
  }
  check(library.docEnd(job) == 1, "DocEnd");
  numbers.report();
  texts.report();
  std::puts("");
}
