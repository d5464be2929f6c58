#pragma once

namespace quillpress::driver {

// Whether this is a browser process in protected mode, which may write to few folders.
bool isProtectedModeProcess();

}  // namespace quillpress::driver
