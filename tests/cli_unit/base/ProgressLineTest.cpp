#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <array>
#include <thread>

#include "cli/base/ProgressLine.h"
#include "cli/system/Descriptor.h"

namespace quillpress::cli {
namespace {

// Puts standard error on a terminal, and reads what comes there.
class ProgressLineTest : public testing::Test {
 protected:
  ProgressLineTest() : before_(dup(STDERR_FILENO)) {
    int reader = -1;
    int terminal = -1;
    EXPECT_EQ(openpty(&reader, &terminal, nullptr, nullptr, nullptr), 0);
    reader_.reset(reader);
    terminal_.reset(terminal);
    dup2(terminal, STDERR_FILENO);
  }
  ~ProgressLineTest() override { leave(); }

  void leave() const { dup2(before_.get(), STDERR_FILENO); }

  [[nodiscard]] std::string shown() const {
    std::array<char, 256> text{};
    // An end that the terminal sees at once.
    EXPECT_EQ(write(STDERR_FILENO, "$", 1), 1);
    std::string all;
    while (!all.ends_with('$')) {
      const ssize_t count = read(reader_.get(), text.data(), text.size());
      if (count <= 0) break;
      all.append(text.data(), static_cast<std::size_t>(count));
    }
    return all.substr(0, all.size() - 1);
  }

 private:
  Descriptor before_;
  Descriptor reader_;
  Descriptor terminal_;
};

TEST_F(ProgressLineTest, ALineComesAfterHalfASecond) {
  ProgressLine line(true);
  EXPECT_FALSE(line.isDue());
  std::this_thread::sleep_for(std::chrono::milliseconds(550));
  EXPECT_TRUE(line.isDue());
  line.show("10 pages");
  EXPECT_FALSE(line.isDue());
  EXPECT_EQ(shown(), "\r10 pages");
}

TEST_F(ProgressLineTest, NothingIsLeftOfALine) {
  {
    ProgressLine line(true);
    line.show("long");
    line.show("ab");
  }
  EXPECT_EQ(shown(), "\rlong\rab  \r  \r");
}

TEST_F(ProgressLineTest, NothingIsShownUnwanted) {
  ProgressLine line(false);
  line.show("text");
  EXPECT_EQ(shown(), "");
}

TEST_F(ProgressLineTest, NothingIsShownWithoutATerminal) {
  leave();
  testing::internal::CaptureStderr();
  ProgressLine line(true);
  line.show("text");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(RoughSizeTest, SizesAreForPeople) {
  EXPECT_EQ(roughSize(0), "0 bytes");
  EXPECT_EQ(roughSize(999), "999 bytes");
  EXPECT_EQ(roughSize(1234), "1.2 kB");
  EXPECT_EQ(roughSize(5600000), "5.6 MB");
  EXPECT_EQ(roughSize(12000000000000), "12000.0 GB");
}

}  // namespace
}  // namespace quillpress::cli
