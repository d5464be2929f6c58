// The whole road of a job, with nothing replaced: a program prints through the printer's driver, its
// PostScript goes through the library, the launcher is told of the file, and the converter makes page content
// of it.

#include <sstream>

#include "tests/umpd/harness/Driver.h"
#include "tests/umpd/harness/DriverTest.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/launcher/support/InstalledLauncher.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"
#include "tests/umpd/road/Drawing.h"
#include "tests/umpd/road/PageConverter.h"

namespace quillpress::harness {
namespace {

class RoadTest : public DriverTest {
 protected:
  RoadTest() { SettingsKey::ofPrinter(printer.name()).setText(L"DefaultSaveDir", folder.path()); }

  // What the printer's driver makes of the drawing.
  [[nodiscard]] std::string printedBytes() const {
    printDrawing(printer.name(), L"Drawing", folder.file(L"spooled"));
    return readFile(folder.file(L"spooled"));
  }

  const TemporaryFolder folder;
  // Wine's spooler makes an empty file of this name when a job of the spooler ends.
  const Printer printer{{.name = L"", .port = folder.file(L"port")}};
  const InstalledLauncher launcher{library, folder.file(L"twsmsnd.log")};
};

// The part of a job from one text up to another.
std::string part(const std::string& job, const std::string& from, const std::string& to) {
  const std::size_t start = job.find(from);
  const std::size_t end = job.find(to);
  EXPECT_LT(start, end) << from << " ... " << to;
  EXPECT_NE(end, std::string::npos) << to;
  return end == std::string::npos ? std::string() : job.substr(start, end - start);
}

// Whether these words stand in the content, in this order and next to each other.
::testing::AssertionResult contains(const std::string& content, const std::string& words) {
  std::string blanks = " ";
  std::istringstream stream(content);
  for (std::string word; stream >> word;) blanks += word + ' ';
  if (blanks.find(' ' + words + ' ') != std::string::npos) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "no \"" << words << "\" in\n" << content;
}

TEST_F(RoadTest, WhatAProgramDrawsArrivesAtTheLauncherByteForByte) {
  const std::string bytes = printedBytes();
  ASSERT_EQ(bytes.substr(0, 4), "%!PS");
  const DWORD id = printer.beginDocument(L"Program - Drawing");
  ASSERT_NE(id, 0U);
  std::size_t jobs = 0;
  for (const std::size_t blockSize : {std::size_t{100000}, std::size_t{4096}, std::size_t{77}}) {
    Job job(library, printer, L"Program - Drawing", id);
    for (std::size_t start = 0; start < bytes.size(); start += blockSize) {
      EXPECT_EQ(job.write(std::string_view(bytes).substr(start, blockSize)), 1);
    }
    EXPECT_EQ(job.end(), 1);

    const std::vector<std::vector<std::wstring>> lines = launcher.lines(2 * ++jobs);
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[lines.size() - 2], (std::vector<std::wstring>{L"startprint", printer.name()}));
    const std::vector<std::wstring>& stop = lines.back();
    ASSERT_EQ(stop.size(), 4U);
    EXPECT_EQ(stop[0], L"stopprint");
    EXPECT_EQ(stop[1], printer.name());
    EXPECT_EQ(stop[3], L"Program - Drawing");
    EXPECT_TRUE(readFile(stop[2]) == bytes) << "with blocks of " << blockSize;
  }
}

TEST_F(RoadTest, EachJobHasAFileOfItsOwn) {
  const DWORD id = printer.beginDocument(L"Program - Drawing");
  std::vector<std::wstring> files;
  for (const std::string bytes : {"first", "second"}) {
    Job job(library, printer, L"Program - Drawing", id);
    EXPECT_EQ(job.write(bytes), 1);
    EXPECT_EQ(job.end(), 1);
    files.push_back(launcher.lines(2 * files.size() + 2).back()[2]);
    EXPECT_EQ(readFile(files.back()), bytes);
  }
  EXPECT_EQ(files[0], folder.file(L"Drawing.pdf"));
  EXPECT_NE(files[1], files[0]);
  EXPECT_EQ(readFile(files[0]), "first");
}

TEST_F(RoadTest, TheFileOfTheLauncherBecomesPageContent) {
  const std::string bytes = printedBytes();
  Job job(library, printer, L"Program - Drawing", printer.beginDocument(L"Program - Drawing"));
  EXPECT_EQ(job.write(bytes), 1);
  EXPECT_EQ(job.end(), 1);
  const std::string file = readFile(launcher.lines(2).back()[2]);

  PageConverter converter(library);
  EXPECT_EQ(converter.convert(part(file, "%!PS", "%%Page: 1 1")), "");

  converter.startPage();
  const std::string shapes = converter.convert(part(file, "%%Page: 1 1", "%%Page: 2 2"));
  EXPECT_TRUE(contains(shapes, "0.24 0 0 0.24 0 0 cm")) << "units of the drawing";
  EXPECT_TRUE(contains(shapes, "1 0 0 -1 0 0 cm")) << "from the top down";
  EXPECT_TRUE(contains(shapes, "100 100 m 500 300 l S")) << "the line";
  EXPECT_TRUE(contains(shapes, "600 100 m 900 100 l 900 400 l 600 400 l h q 1 0 0 RG 1 0 0 rg f Q S"))
      << "the red rectangle";
  EXPECT_TRUE(contains(shapes, "1 0 0 1 750 700 cm 300 0 0 200 0 0 cm 0.5 0 m")) << "the ellipse";
  EXPECT_TRUE(contains(shapes, "0 0 1 RG 0 0 1 rg 10 w")) << "the thick pen";
  EXPECT_TRUE(contains(shapes, "100 1500 m 300 1500 l 200 1800 l h S")) << "the triangle";
  EXPECT_TRUE(contains(shapes, "100 1000 m 500 1000 l 500 1300 l 100 1300 l h q 0 0.5 0 RG 0 0.5 0 rg q W n"))
      << "the hatched rectangle";

  // The samples of the bitmap come in a dictionary between << and >>, which the converter does not read.
  converter.startPage();
  const std::string bitmap = converter.convert(part(file, "%%Page: 2 2", "<<"));
  EXPECT_TRUE(contains(bitmap, "1 0 0 1 1000 1000 cm 400 0 0 400 0 0 cm")) << "the place of the bitmap";
}

}  // namespace
}  // namespace quillpress::harness
