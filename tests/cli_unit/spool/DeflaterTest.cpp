#include <gtest/gtest.h>
#include <libdeflate.h>

#include <string>

#include "cli/spool/Deflater.h"

namespace quillpress::cli {
namespace {

std::string inflated(std::string_view deflated, std::size_t size) {
  std::string text(size, '\0');
  libdeflate_decompressor* const decompressor = libdeflate_alloc_decompressor();
  const auto result = libdeflate_zlib_decompress(decompressor, deflated.data(), deflated.size(), text.data(),
                                                 text.size(), nullptr);
  libdeflate_free_decompressor(decompressor);
  EXPECT_EQ(result, LIBDEFLATE_SUCCESS);
  return text;
}

std::string sample(std::size_t size) {
  std::string text;
  for (unsigned i = 0; text.size() < size; ++i) text += std::to_string(i * i % 1009) + " ";
  return text.substr(0, size);
}

TEST(DeflaterTest, TextComesBackWithEveryEffort) {
  for (const auto effort : {Deflater::Effort::kNone, Deflater::Effort::kQuick, Deflater::Effort::kUsual,
                            Deflater::Effort::kThorough}) {
    const std::string text = sample(100000);
    const Deflater deflater(effort);
    deflater.deflate(text, [&](std::string_view bytes) { EXPECT_EQ(inflated(bytes, text.size()), text); });
  }
}

TEST(DeflaterTest, NothingHasAFormToo) {
  const Deflater deflater;
  deflater.deflate("", [](std::string_view bytes) {
    EXPECT_FALSE(bytes.empty());
    EXPECT_EQ(inflated(bytes, 0), "");
  });
}

TEST(DeflaterTest, MoreEffortGivesLess) {
  const std::string text = sample(100000);
  const std::size_t none = Deflater(Deflater::Effort::kNone).deflatedSize(text);
  const std::size_t quick = Deflater(Deflater::Effort::kQuick).deflatedSize(text);
  const std::size_t thorough = Deflater(Deflater::Effort::kThorough).deflatedSize(text);
  EXPECT_GT(none, text.size());
  EXPECT_LT(quick, text.size() / 2);
  EXPECT_LE(thorough, quick);
}

}  // namespace
}  // namespace quillpress::cli
