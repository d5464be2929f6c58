// How blocks become the output file.

#include <algorithm>
#include <string>

#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

class WriteTest : public JobTest {
 protected:
  // Counts what goes to files, and lets `accept` bytes of each block through; fewer with success or not.
  void interfere(DWORD accept, BOOL result) {
    library.replace(
        "WriteFile",
        [=, this](HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped) -> BOOL {
          ++writes;
          ::WriteFile(file, bytes, std::min(size, accept), written, overlapped);
          if (!result) SetLastError(ERROR_DISK_FULL);
          return result;
        });
  }

  const std::wstring path = folder.file(L"Document.pdf");
  int writes = 0;
};

TEST_F(WriteTest, AppendsEveryBlockUnchanged) {
  const std::string first("%!PS\r\n\0\x1A\xFF\n", 10);
  const std::string second("\x04 showpage\n\n\r");
  Job job(library, printer);
  EXPECT_EQ(job.write(first), 1);
  EXPECT_EQ(job.write(second), 1);
  EXPECT_EQ(job.write(first), 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(readFile(path), first + second + first);
}

TEST_F(WriteTest, TakesLargeBlocks) {
  std::string block(3'000'000, '\0');
  for (std::size_t i = 0; i < block.size(); ++i) block[i] = static_cast<char>(i * 7 / 3);
  EXPECT_EQ(print(L"Document", block), 1);
  EXPECT_TRUE(readFile(path) == block);
}

TEST_F(WriteTest, MakesTheFileAtTheFirstBlock) {
  Job job(library, printer);
  EXPECT_FALSE(fileExists(path));
  EXPECT_EQ(job.write("x"), 1);
  EXPECT_TRUE(fileExists(path));
}

TEST_F(WriteTest, AnEmptyFirstBlockMakesTheFile) {
  Job job(library, printer);
  EXPECT_EQ(job.write(""), 1);
  EXPECT_EQ(readFile(path), "");
  EXPECT_EQ(job.write("later"), 1);
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(readFile(path), "later");
}

TEST_F(WriteTest, AnEmptyBlockAddsNothing) {
  Job job(library, printer);
  EXPECT_EQ(job.write("one"), 1);
  EXPECT_EQ(job.write(""), 1);
  EXPECT_EQ(job.write("two"), 1);
  job.end();
  EXPECT_EQ(readFile(path), "onetwo");
}

TEST_F(WriteTest, ABlockThatCannotBeReadFailsAfterTheFileIsMade) {
  Job job(library, printer, L"Document", 3);
  EXPECT_EQ(Driver(library).docWrite(job.handle(), nullptr, 3), 0);
  EXPECT_EQ(readFile(path), "");
  EXPECT_EQ(job.write("later"), 0);
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(lastFile(), path);
}

TEST_F(WriteTest, NoBytesAtNoAddressAreAnEmptyBlock) {
  Job job(library, printer);
  EXPECT_EQ(Driver(library).docWrite(job.handle(), nullptr, 0), 1);
  EXPECT_EQ(readFile(path), "");
}

TEST_F(WriteTest, EveryBlockReachesTheFileAtOnce) {
  Job job(library, printer);
  job.write("one");
  EXPECT_EQ(readFile(path), "one");
  job.write("two");
  EXPECT_EQ(readFile(path), "onetwo");
}

TEST_F(WriteTest, AFailedBlockGivesZero) {
  Job job(library, printer);
  EXPECT_EQ(job.write("one"), 1);
  interfere(0, FALSE);
  EXPECT_EQ(job.write("two"), 0);
}

TEST_F(WriteTest, ABlockThatIsWrittenInPartGivesZero) {
  Job job(library, printer);
  interfere(2, TRUE);
  EXPECT_EQ(job.write("one"), 0);
}

TEST_F(WriteTest, NothingIsTriedAfterAFailedBlock) {
  Job job(library, printer);
  interfere(2, FALSE);
  EXPECT_EQ(job.write("one"), 0);
  interfere(1000, TRUE);
  EXPECT_EQ(job.write("two"), 0);
  EXPECT_EQ(job.write(""), 0);
  EXPECT_EQ(writes, 1);
  EXPECT_EQ(readFile(path), "on");
}

TEST_F(WriteTest, AFailedFirstBlockIsNotTriedAgain) {
  int creations = 0;
  library.replace("CreateFileW", [&](LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE) {
    ++creations;
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
  });
  Job job(library, printer);
  EXPECT_EQ(job.write("one"), 0);
  EXPECT_EQ(job.write("two"), 0);
  EXPECT_EQ(creations, 1);
}

TEST_F(WriteTest, AJobWithAFailedBlockStillEnds) {
  Job job(library, printer, L"Document", 3);
  EXPECT_EQ(job.write("whole "), 1);
  interfere(2, FALSE);
  EXPECT_EQ(job.write("half"), 0);
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(queue.controls().size(), 1U);
  EXPECT_EQ(lastFile(), path);
  EXPECT_EQ(readFile(path), "whole ha");
}

TEST_F(WriteTest, AFailedBlockShowsNoBox) {
  interfere(0, FALSE);
  EXPECT_EQ(print(L"Document"), 0);
  EXPECT_TRUE(boxes.take().empty());
}

TEST_F(WriteTest, AJobTellsTheDebuggerNothing) {
  EXPECT_EQ(print(L"Document"), 1);
  interfere(0, FALSE);
  EXPECT_EQ(print(L"Another"), 0);
  EXPECT_TRUE(debuggerOutput.take().empty());
}

}  // namespace
}  // namespace quillpress::harness
