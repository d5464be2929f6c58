#pragma once

namespace quillpress::driver {

// The diagnostic trace of the front end, in the manner of wprintf on Windows: %s is a wide text. It is
// compiled silent; to follow a job, give the function a body and set the constant.
inline constexpr bool kIsTraceOn = false;
inline void trace(const wchar_t* /*format*/, ...) {}

}  // namespace quillpress::driver
