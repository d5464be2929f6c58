#pragma once

namespace quillpress {

// The diagnostic trace of the front end, in the manner of printf (%ls for wide texts). It is compiled
// silent; to follow a job, give this function a body.
[[gnu::format(printf, 1, 2)]] inline void trace(const char* /*format*/, ...) {}

}  // namespace quillpress
