#pragma once

#include "cli/base/Options.h"

namespace quillpress::cli {

// Whether the options ask for anything that is done to a PDF when it is complete: pages chosen or turned,
// texts of its information, encryption and such, or a file for each page.
bool wantsFinishing(const Options& options);

// Whether the options ask for several processes, or for anything that belongs to a run of many jobs.
bool wantsBatch(const Options& options);

}  // namespace quillpress::cli
