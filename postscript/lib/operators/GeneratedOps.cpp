#include "postscript/lib/operators/GeneratedOps.h"

namespace quillpress {

GeneratedOps::~GeneratedOps() = default;

}  // namespace quillpress
