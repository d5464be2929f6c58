#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>

#include "postscript/level3/document/Machine.h"
#include "postscript/level3/streams/MemoryStreams.h"
#include "tests/level3/language/TableReader.h"

// Every row of the tables beside this file is a test, named after its table and its behaviour. The same
// tables go through Ghostscript with compare_with_ghostscript.py.

namespace quillpress::level3 {

namespace {

std::string contentsOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream contents;
  contents << stream.rdbuf();
  return contents.str();
}

const std::string& prelude() {
  static const std::string text = contentsOf(std::filesystem::path(LANGUAGE_TABLES) / "prelude.ps");
  return text;
}

// Finds values that a collection takes away while they are needed.
bool collectsOften = false;

std::string outputOf(const std::string& program) {
  const std::string whole = prelude() + program;
  const auto output = std::make_shared<MemorySink>();
  constexpr double kPageSize = 612;
  NoOutput pages;
  Machine machine(pages, {std::make_shared<MemorySource>(Bytes()), output, std::make_shared<NullSink>()},
                  kPageSize, kPageSize);
  constexpr std::size_t kOften = 2048;
  if (collectsOften) machine.interpreter().memory().collectEvery(kOften);
  machine.interpreter().setDeadline(std::chrono::steady_clock::now() + std::chrono::seconds(60));
  machine.interpreter().run(std::make_shared<MemorySource>(bytesOf(whole)));
  return std::string(textOf(Bytes(output->bytes())));
}

class Row : public ::testing::Test {
 public:
  explicit Row(TableRow row) : row_(std::move(row)) {}
  void TestBody() override { EXPECT_EQ(squeezed(outputOf(row_.program)), row_.expected) << row_.program; }

 private:
  TableRow row_;
};

void addTable(const std::filesystem::path& file) {
  const std::string table = file.stem().string();
  for (const TableRow& row : readTable(file)) {
    ::testing::RegisterTest(table.c_str(), row.name.c_str(), nullptr, nullptr, file.string().c_str(),
                            row.line, [row]() -> ::testing::Test* { return new Row(row); });
  }
}

void addTables() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(LANGUAGE_TABLES)) {
    if (entry.path().extension() == ".txt") files.push_back(entry.path());
  }
  if (files.empty()) throw std::runtime_error("no tables in " LANGUAGE_TABLES);
  std::sort(files.begin(), files.end());
  for (const auto& file : files) addTable(file);
}

}  // namespace

}  // namespace quillpress::level3

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  quillpress::level3::collectsOften = argc > 1 && std::string_view(argv[1]) == "--collect-often";
  try {
    quillpress::level3::addTables();
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  return RUN_ALL_TESTS();
}
