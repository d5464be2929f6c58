// Runs the PostScript scripts of a folder against the delivered library. Every case runs whole, cut in two
// at each byte, and byte by byte, each time in a new converter, and must have one result. Under the
// sanitizers, which make each opening fifteen times as slow, it is cut at every eighth byte, from each of the
// first eight on.
//
//   script_tests --scripts=FOLDER [Google Test options]

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/scripts/runner/ScriptCase.h"
#include "tests/scripts/runner/ScriptRun.h"

namespace {

using Chunks = std::vector<std::string_view>;

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t kPiece = 8;
#else
constexpr std::size_t kPiece = std::string_view::npos;
#endif

// A first piece, and the rest in pieces of a length.
Chunks cutUp(std::string_view script, std::size_t first, std::size_t length) {
  Chunks pieces{script.substr(0, first)};
  for (script.remove_prefix(first); !script.empty(); script.remove_prefix(pieces.back().size()))
    pieces.push_back(script.substr(0, length));
  return pieces;
}

void check(const ScriptCase& expected, const Chunks& chunks, const std::string& howCut) {
  SCOPED_TRACE(howCut);
  const Outcome outcome = runScript(chunks, expected.operands.has_value());
  EXPECT_EQ(outcome.error, expected.error.value_or(""));
  EXPECT_EQ(outcome.operands, expected.operands.value_or(outcome.operands));
  EXPECT_EQ(outcome.content, expected.content.value_or(outcome.content));
  EXPECT_EQ(outcome.prints, expected.prints.value_or(outcome.prints));
}

class ScriptTest : public testing::Test {
 public:
  explicit ScriptTest(ScriptCase scriptCase) : case_(std::move(scriptCase)) {}

  void TestBody() override {
    const std::string_view script = case_.script;
    check(case_, {script}, "whole: " + case_.script);
    for (std::size_t cut = 1; cut < script.size() && cut <= kPiece && !HasFailure(); ++cut)
      check(case_, cutUp(script, cut, kPiece), "cut at byte " + std::to_string(cut) + ": " + case_.script);
    if (!HasFailure()) check(case_, cutUp(script, 1, 1), "byte by byte: " + case_.script);
  }

 private:
  ScriptCase case_;
};

void registerScript(const std::filesystem::path& path) {
  const std::string suite = path.parent_path().filename().string() + "_" + path.stem().string();
  for (const ScriptCase& scriptCase : readScriptCases(path.string())) {
    const std::string name = "Line" + std::to_string(scriptCase.line);
    testing::RegisterTest(suite.c_str(), name.c_str(), nullptr, nullptr, path.string().c_str(),
                          scriptCase.line,
                          [scriptCase]() -> ScriptTest* { return new ScriptTest(scriptCase); });
  }
}

int registerFolder(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> scripts;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == ".ps") scripts.push_back(entry.path());
  }
  std::sort(scripts.begin(), scripts.end());
  for (const auto& script : scripts) registerScript(script);
  return static_cast<int>(scripts.size());
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  constexpr std::string_view kOption = "--scripts=";
  int scripts = 0;
  try {
    for (int i = 1; i < argc; ++i) {
      const std::string_view argument = argv[i];
      if (argument.starts_with(kOption))
        scripts += registerFolder(std::string(argument.substr(kOption.size())));
    }
  } catch (const std::exception& error) {
    std::printf("script_tests: %s\n", error.what());
    return 1;
  }
  if (scripts == 0) {
    std::printf("script_tests: no scripts; name a folder with --scripts=FOLDER\n");
    return 1;
  }
  return RUN_ALL_TESTS();
}
