#pragma once

#include "umpd/win32/Windows.h"
// The spooler's header needs the one above.
#include <winspool.h>
