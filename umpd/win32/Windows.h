#pragma once

// The one way to the system's headers.
#include <windows.h>
