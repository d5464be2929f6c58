#pragma once

// The one way to the system's header in the command line, with what of the system is declared apart.

#include <windows.h>

// Needs the former.
#include <shellapi.h>
