#pragma once

#include <cstddef>
#include <cstdint>

// The bounds against hostile and damaged jobs. What they refuse ends in an Ex; each is far beyond what a job
// needs. Everything else grows until memory ends.
namespace quillpress {

// How deep arrays and dictionaries may be nested when they are printed or compared, which an array that holds
// itself exceeds. Little enough for the small stacks of a print spooler's threads.
inline constexpr std::size_t kMaxNesting = 500;

// The pairs of objects that one eq looks at. Shared parts are compared again and again: a few kilobytes of
// job could keep the host busy for years.
inline constexpr std::size_t kMaxComparisons = std::size_t{1} << 24U;

// The bytes of an array's text. Shared parts multiply in it as well.
inline constexpr std::size_t kMaxArrayText = std::size_t{64} << 20U;

// The sweep of one arc in degrees, 100,000 turns: each quadrant is written as a curve.
inline constexpr double kMaxArcSweep = 36000000;

// The empty strings in a row that an image's data source may yield while the input does not move: it would be
// run for ever.
inline constexpr int kMaxEmptyImageStrings = 100000;

// The room that is made at once for image data. A job may announce any size, so beyond this the data grows as
// it comes.
inline constexpr std::size_t kMaxImageDataReserved = std::size_t{64} << 20U;

// The page content of one call and the data of one image, whose lengths callers take as 32-bit integers.
inline constexpr std::size_t kMaxContent = INT32_MAX;

}  // namespace quillpress
