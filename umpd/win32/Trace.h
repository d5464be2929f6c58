#pragma once

namespace quillpress {

// The diagnostic trace of the front end, in the manner of printf (%ls for wide texts). It is compiled
// silent; to follow a job, give the function a body and set the constant.
inline constexpr bool kIsTraceOn = false;
[[gnu::format(printf, 1, 2)]] inline void trace(const char* /*format*/, ...) {}

}  // namespace quillpress
