#pragma once

#include <string>

#include "umpd/rules/StringMap.h"

namespace quillpress::driver {

// What the driver configuration file of NT 4.0 tells the rendering side: NAME=VALUE& for each setting that it
// wants, in the order of the map.
std::wstring driverConfigText(const StringMap& settings);

}  // namespace quillpress::driver
