#include <gtest/gtest.h>

#include <cerrno>

#include "cli/system/Files.h"
#include "cli/system/TemporaryName.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

// Letters of three alphabets, as names of documents have them.
constexpr const char* kWideName = "r\xC3\xA9sum\xC3\xA9 \xD0\xBE\xD1\x82 \xE6\x97\xA5\xE6\x9C\xAC.pdf";
// What text modes would change, and end at.
constexpr std::string_view kBytes("a\r\nb\nc\x1A\0d", 9);

class FilesTest : public FolderTest {
 protected:
  [[nodiscard]] std::string appended(const std::string& name, std::string_view bytes,
                                     Contents contents) const {
    const Descriptor file = openForAppending(path(name), contents);
    EXPECT_EQ(writeTo(file, bytes), static_cast<std::ptrdiff_t>(bytes.size()));
    return read(name);
  }
};

TEST_F(FilesTest, BytesAreReadAsTheyWereWritten) {
  EXPECT_EQ(appended(kWideName, kBytes, Contents::kDropped), kBytes);
  const Descriptor file = openForReading(path(kWideName));
  ASSERT_TRUE(file);
  std::string buffer(100, 'x');
  ASSERT_EQ(readFrom(file, buffer.data(), buffer.size()), static_cast<std::ptrdiff_t>(kBytes.size()));
  EXPECT_EQ(buffer.substr(0, kBytes.size()), kBytes);
  EXPECT_EQ(readFrom(file, buffer.data(), buffer.size()), 0);
  EXPECT_EQ(files(), std::vector<std::string>{kWideName});
}

TEST_F(FilesTest, WhatIsThereIsKeptOrDropped) {
  write("report", "old");
  EXPECT_EQ(appended("report", "new", Contents::kKept), "oldnew");
  EXPECT_EQ(appended("report", "last", Contents::kDropped), "last");
}

TEST_F(FilesTest, AFolderIsOpenedAndKnownAsOne) {
  const Descriptor opened = openForReading(folder());
  ASSERT_TRUE(opened);
  ASSERT_TRUE(statusOf(opened));
  EXPECT_EQ(statusOf(opened)->kind, FileStatus::Kind::kFolder);
}

TEST_F(FilesTest, WhatIsMissingHasNoStatusAndAReason) {
  EXPECT_FALSE(statusOf(path("missing")));
  errno = 0;
  EXPECT_FALSE(openForReading(path("missing")));
  EXPECT_EQ(errno, ENOENT);
  EXPECT_FALSE(openForAppending(path("missing/file"), Contents::kKept));
  EXPECT_EQ(errno, ENOENT);
}

TEST_F(FilesTest, TwoNamesOfAFileAreOneFile) {
  write("one", "");
  write("other", "");
  std::filesystem::create_hard_link(pathOf(path("one")), pathOf(path("second")));
  ASSERT_TRUE(statusOf(path("one")));
  EXPECT_EQ(statusOf(path("one"))->kind, FileStatus::Kind::kPlain);
  EXPECT_TRUE(statusOf(path("one"))->isSameFileAs(*statusOf(path("second"))));
  EXPECT_TRUE(statusOf(path("one"))->isSameFileAs(*statusOf(openForReading(path("second")))));
  EXPECT_FALSE(statusOf(path("one"))->isSameFileAs(*statusOf(path("other"))));
}

// Of more characters than Windows usually takes.
TEST_F(FilesTest, PathsMayBeLong) {
  std::vector<std::string> names{folder()};
  while (names.back().size() < 300) {
    names.push_back(names.back() + "/" + std::string(60, 'a'));
    EXPECT_TRUE(std::filesystem::create_directory(pathOf(names.back())));
  }
  names.push_back(names.back() + "/job.ps");
  EXPECT_EQ(writeTo(openForAppending(names.back(), Contents::kKept), "%!PS"), 4);
  EXPECT_TRUE(openForReading(names.back()));
  EXPECT_TRUE(statusOf(names.back()));
  EXPECT_TRUE(isWritable(names.back()));
  // One by one, as each is told its own way of being long.
  for (; names.size() > 1; names.pop_back()) EXPECT_TRUE(std::filesystem::remove(pathOf(names.back())));
}

TEST_F(FilesTest, ATemporaryFileIsReadAndWrittenAnywhere) {
  const Descriptor file = openTemporary(folder());
  ASSERT_TRUE(file);
  EXPECT_EQ(writeAt(file, 4, "5678"), 4);
  EXPECT_EQ(writeAt(file, 0, "1234"), 4);
  std::string buffer(4, 'x');
  EXPECT_EQ(readAt(file, 2, buffer.data(), buffer.size()), 4);
  EXPECT_EQ(buffer, "3456");
  EXPECT_TRUE(cutFile(file, 3));
  EXPECT_EQ(readAt(file, 2, buffer.data(), buffer.size()), 1);
  EXPECT_EQ(readAt(file, 3, buffer.data(), buffer.size()), 0);
}

TEST_F(FilesTest, ATemporaryFileIsGoneWithItsDescriptor) {
  { const Descriptor file = openTemporary(folder()); }
  EXPECT_TRUE(files().empty());
  EXPECT_FALSE(openTemporary(path("missing")));
  EXPECT_EQ(errno, ENOENT);
}

TEST_F(FilesTest, AStreamTakesItsDescriptorOver) {
  Descriptor file = openTemporary(folder());
  std::FILE* const stream = streamOf(file, "w+b");
  ASSERT_NE(stream, nullptr);
  EXPECT_FALSE(file);
  EXPECT_EQ(std::fwrite(kBytes.data(), 1, kBytes.size(), stream), kBytes.size());
  EXPECT_EQ(std::fflush(stream), 0);
  EXPECT_EQ(positionOf(stream), kBytes.size());
  const Descriptor copy = copyOf(stream);
  std::fclose(stream);
  std::string buffer(kBytes.size(), 'x');
  EXPECT_EQ(readAt(copy, 0, buffer.data(), buffer.size()), static_cast<std::ptrdiff_t>(kBytes.size()));
  EXPECT_EQ(buffer, kBytes);
  EXPECT_TRUE(isSynced(copy));
}

TEST_F(FilesTest, AFileOnItsWayReplacesItsTarget) {
  write(kWideName, "before");
  TemporaryName name;
  Descriptor file = name.create(folder());
  ASSERT_TRUE(file);
  EXPECT_EQ(writeTo(file, "after"), 5);
  EXPECT_EQ(read(kWideName), "before");
  EXPECT_TRUE(name.moveTo(file, path(kWideName)));
  file.reset();
  EXPECT_EQ(files(), std::vector<std::string>{kWideName});
  EXPECT_EQ(read(kWideName), "after");
}

TEST_F(FilesTest, AFileOnItsWayIsGoneWithItsOwner) {
  {
    TemporaryName name;
    const Descriptor file = name.create(folder());
    EXPECT_TRUE(file);
  }
  EXPECT_TRUE(files().empty());
}

}  // namespace
}  // namespace quillpress::cli
