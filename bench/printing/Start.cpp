#include <cstdio>

#include "bench/printing/Benchmarks.h"
#include "bench/printing/Check.h"
#include "bench/printing/DriverLibrary.h"
#include "bench/printing/Printer.h"
#include "bench/printing/Rounds.h"

void measureStart(Printer& printer, int rounds) {
  constexpr int kTimes = 50;
  constexpr double kMilliseconds = 1000.0 / kTimes;
  std::vector<double> loads;
  std::vector<double> jobs;
  for (int round = 0; round < rounds; ++round) {
    loads.push_back(kMilliseconds * seconds([] {
                      for (int i = 0; i < kTimes; ++i) DriverLibrary();
                    }));
    const DriverLibrary library;
    jobs.push_back(kMilliseconds * seconds([&] {
                     for (int i = 0; i < kTimes; ++i) {
                       const unsigned long job =
                           library.docStart2K(printer.handle(), 0, printer.name().data(), nullptr);
                       check(job != 0 && library.docEnd(job) == 1, "a job");
                     }
                   }));
  }
  std::printf("load and unload        %9.3f ms\n", median(loads));
  std::printf("DocStart2K and DocEnd  %9.3f ms\n\n", median(jobs));
}
