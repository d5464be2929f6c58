#include <gtest/gtest.h>

#include <cstdlib>

#include "cli/base/HelpTexts.h"
#include "cli/base/Options.h"
#include "cli/manual/Completions.h"
#include "cli/manual/ManualPage.h"
#include "cli/manual/OptionTable.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

bool parses(const std::vector<std::string>& arguments) {
  std::vector<const char*> words{"quillpress"};
  for (const std::string& argument : arguments) words.push_back(argument.c_str());
  ExitCode exit = ExitCode::kDone;
  return parseOptions(static_cast<int>(words.size()), words.data(), exit).has_value();
}

std::string withPlainDashes(std::string text) {
  for (std::size_t at = text.find("\\-"); at != std::string::npos; at = text.find("\\-", at))
    text.erase(at, 1);
  return text;
}

void expectIn(const std::string& text, const std::string& part) {
  EXPECT_NE(text.find(part), std::string::npos) << part;
}

TEST(OptionTableTest, RowsAreWhatTheCommandLineTakes) {
  EXPECT_GT(optionTable().size(), 20U);
  for (const OptionRow& option : optionTable()) {
    EXPECT_TRUE(option.longName.starts_with("--")) << option.longName;
    EXPECT_EQ(option.help.find('\n'), std::string::npos) << option.longName;
    EXPECT_FALSE(option.summary().empty()) << option.longName;
    // With a password, which permissions want.
    for (const std::string& choice : option.choices()) {
      EXPECT_TRUE(parses({"job.ps", "--owner-password=o", option.longName, choice}) ||
                  parses({"job.ps", option.longName, choice}))
          << option.longName << " " << choice;
    }
  }
}

TEST(ManualPageTest, EveryOptionExitCodeAndExampleIsThere) {
  const std::string page = withPlainDashes(manualPage());
  EXPECT_TRUE(page.starts_with(".TH QUILLPRESS 1 "));
  for (const OptionRow& option : optionTable()) {
    expectIn(page, option.longName);
    expectIn(page, option.help);
  }
  for (const ExitCodeHelp& help : exitCodeHelp()) expectIn(page, ".B " + std::to_string(help.code) + "\n");
  for (const ExampleHelp& example : exampleHelp()) expectIn(page, std::string(example.command));
}

TEST(CompletionsTest, EveryOptionIsCompleted) {
  for (const OptionRow& option : optionTable()) {
    expectIn(bashCompletion(), option.longName);
    expectIn(zshCompletion(), option.longName);
    expectIn(fishCompletion(), " -l " + option.longName.substr(2) + " ");
    for (const std::string& choice : option.choices()) {
      for (const std::string& script : {bashCompletion(), zshCompletion(), fishCompletion()})
        expectIn(script, choice);
    }
  }
}

class BashCompletionTest : public FolderTest {};

TEST_F(BashCompletionTest, BashCompletesNamesAndChoices) {
  const std::string script = write("completion", bashCompletion());
  const auto complete = [&](const std::string& words, const std::string& expected) {
    const std::string command =
        "bash -c '. " + script + "; COMP_WORDS=(quillpress " + words +
        "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _quillpress; [ \"${COMPREPLY[*]}\" = \"" + expected +
        "\" ]'";
    EXPECT_EQ(std::system(command.c_str()), 0) << words;
  };
  complete("--dia", "--dialect");
  complete("--dialect d", "driver");
  complete("--rotate \"\"", "90 180 270");
  complete(path("compl"), script);
}

}  // namespace
}  // namespace quillpress::cli
