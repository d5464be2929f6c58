#pragma once

namespace quillpress::harness {

// Ends the process, naming the test, when a test takes too long: what waits for a mutex or an event without
// limit would otherwise hold up the whole run. Every test begins with the same number of seconds.
class Watchdog {
 public:
  static constexpr unsigned kSeconds = 60;

  // Begins to watch; called once, before the first test.
  static void start();

  // The current test may take this long from now on.
  static void allow(unsigned seconds);

  // Until the process would be ended, less a margin in which a test can still say what went wrong.
  static unsigned long remainingMilliseconds();
};

}  // namespace quillpress::harness
