#include "postscript/lib/objects/CompositeData.h"

namespace quillpress {

CompositeData::~CompositeData() = default;

}  // namespace quillpress
