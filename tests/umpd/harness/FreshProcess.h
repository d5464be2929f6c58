#pragma once

#include <functional>

namespace quillpress::harness {

// Runs `body` in a new process of this program, which runs the current test alone; the test fails when it
// fails there, and shows what it printed. For what Windows keeps for the life of a process; what the library
// keeps goes when it is unloaded, after every test. Fixtures are set up in both processes.
void inFreshProcess(const std::function<void()>& body);

}  // namespace quillpress::harness
