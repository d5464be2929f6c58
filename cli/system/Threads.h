#pragma once

#ifdef _WIN32
#include "cli/system/windows/ThreadTypes.h"
#else
#include "cli/system/posix/ThreadTypes.h"
#endif
