#include "operators/GeneratedOps.h"

namespace quillpress {

GeneratedOps::~GeneratedOps() = default;

}  // namespace quillpress
