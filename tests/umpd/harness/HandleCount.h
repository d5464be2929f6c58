#pragma once

namespace quillpress::harness {

// The number of kernel handles that this process has open: what a leak makes grow.
unsigned long handleCount();

}  // namespace quillpress::harness
