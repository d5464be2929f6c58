// Speed of the library through its C API. The process-wide list of PDF objects cannot be emptied from there
// and stores equal images once, so that rounds of an image benchmark share one object.

#include <benchmark/benchmark.h>
#include <quillpress/converter.h>

#include <algorithm>
#include <string>

#include "bench/Jobs.h"

namespace {

using quillpress::bench::binaryImageJob;
using quillpress::bench::hexImageJob;
using quillpress::bench::tokenJob;
using quillpress::bench::vectorJob;

constexpr float kIdentity[6] = {1, 0, 0, 1, 0, 0};
constexpr std::int64_t kDefaultChunk = 65536;

// Converts the whole job; false when that fails.
bool convert(const std::string& job, std::size_t chunk) {
  void* handle = PSOpen(kIdentity);
  bool converted = true;
  for (std::size_t at = 0; converted && at < job.size(); at += chunk) {
    int length = static_cast<int>(std::min(chunk, job.size() - at));
    converted = PSConvertToPdf(handle, job.data() + at, &length) != nullptr;
    benchmark::DoNotOptimize(length);
  }
  PSClose(handle);
  return converted;
}

void run(benchmark::State& state, const std::string& job) {
  const auto chunk = static_cast<std::size_t>(state.range(0));
  for ([[maybe_unused]] auto round : state)
    if (!convert(job, chunk)) state.SkipWithError("the job fails");
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(job.size()));
}

void openAndClose(benchmark::State& state) {
  for ([[maybe_unused]] auto round : state) PSClose(PSOpen(kIdentity));
}
BENCHMARK(openAndClose)->Unit(benchmark::kMicrosecond);

void startPage(benchmark::State& state) {
  void* handle = PSOpen(kIdentity);
  for ([[maybe_unused]] auto round : state) PSStartPage(handle, kIdentity);
  PSClose(handle);
}
BENCHMARK(startPage)->Unit(benchmark::kMicrosecond);

// The argument is the size of a chunk.
void vector(benchmark::State& state) {
  static const std::string job = vectorJob(4'000'000);
  run(state, job);
}
BENCHMARK(vector)->Arg(64)->Arg(1024)->Arg(kDefaultChunk)->Arg(4'000'000)->Unit(benchmark::kMillisecond);

void tokens(benchmark::State& state) {
  static const std::string job = tokenJob(4'000'000);
  run(state, job);
}
BENCHMARK(tokens)->Arg(kDefaultChunk)->Unit(benchmark::kMillisecond);

void hexImage(benchmark::State& state) {
  static const std::string job = hexImageJob(6'000'000);
  run(state, job);
}
BENCHMARK(hexImage)->Arg(1024)->Arg(kDefaultChunk)->Unit(benchmark::kMillisecond);

void binaryImage(benchmark::State& state) {
  static const std::string job = binaryImageJob(6'000'000);
  run(state, job);
}
BENCHMARK(binaryImage)->Arg(1024)->Arg(kDefaultChunk)->Unit(benchmark::kMillisecond);

}  // namespace
