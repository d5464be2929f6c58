#include <fcntl.h>
#include <gtest/gtest.h>

#include "cli/system/Descriptor.h"

namespace quillpress::cli {
namespace {

int opened() {
  return open("/dev/null", O_RDONLY | O_CLOEXEC);
}

bool isOpen(int number) {
  return fcntl(number, F_GETFD) != -1;
}

TEST(DescriptorTest, ItIsClosedWithItsOwner) {
  const int number = opened();
  {
    const Descriptor owner(number);
    EXPECT_TRUE(owner);
    EXPECT_EQ(owner.get(), number);
  }
  EXPECT_FALSE(isOpen(number));
}

TEST(DescriptorTest, AFailedCallGivesAnEmptyOne) {
  EXPECT_FALSE(Descriptor(-1));
  EXPECT_FALSE(Descriptor());
}

TEST(DescriptorTest, MovingHandsItOver) {
  const int number = opened();
  Descriptor first(number);
  Descriptor second(std::move(first));
  EXPECT_EQ(second.get(), number);
  const int replaced = opened();
  Descriptor third(replaced);
  third = std::move(second);
  EXPECT_FALSE(isOpen(replaced));
  EXPECT_EQ(third.get(), number);
  EXPECT_TRUE(isOpen(number));
}

TEST(DescriptorTest, WhatIsReleasedStaysOpen) {
  const int number = opened();
  {
    Descriptor owner(number);
    EXPECT_EQ(owner.release(), number);
    EXPECT_FALSE(owner);
  }
  EXPECT_TRUE(isOpen(number));
  close(number);
}

}  // namespace
}  // namespace quillpress::cli
