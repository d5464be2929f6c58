#include "cli/manual/Completions.h"

#include "cli/manual/OptionTable.h"

namespace quillpress::cli {

namespace {

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : " ").append(word);
  return text;
}

// In single quotes, for every one of the shells.
std::string inQuotes(std::string_view text) {
  std::string result = "'";
  for (const char character : text) {
    if (character == '\'') {
      result += "'\\''";
    } else {
      result += character;
    }
  }
  return result + "'";
}

// As a pattern of bash's case: "-o|--output".
std::string bashPattern(const OptionRow& option) {
  return option.shortName.empty() ? option.longName : option.shortName + "|" + option.longName;
}

std::string bashAnswer(const OptionRow& option) {
  if (option.takesFile()) return "COMPREPLY=($(compgen -f -- \"$present\"))";
  if (option.takesFolder()) return "COMPREPLY=($(compgen -d -- \"$present\"))";
  return "COMPREPLY=($(compgen -W " + inQuotes(joined(option.choices())) + " -- \"$present\"))";
}

// What zsh completes behind the option: ":FILE:_files".
std::string zshAction(const OptionRow& option) {
  if (option.values.empty()) return {};
  std::string action;
  if (option.takesFile()) action = "_files";
  if (option.takesFolder()) action = "_files -/";
  if (!option.choices().empty()) action = "(" + joined(option.choices()) + ")";
  return ":" + option.values + ":" + action;
}

// Brackets and colons mean something to zsh.
std::string zshText(const std::string& text) {
  std::string result;
  for (const char character : text) {
    if (character == '[' || character == ']' || character == ':') result += '\\';
    result += character;
  }
  return result;
}

}  // namespace

std::string bashCompletion() {
  std::string cases;
  std::vector<std::string> names;
  for (const OptionRow& option : optionTable()) {
    if (!option.shortName.empty()) names.push_back(option.shortName);
    names.push_back(option.longName);
    if (option.values.empty()) continue;
    cases += "    " + bashPattern(option) + ")\n      " + bashAnswer(option) + "\n      return ;;\n";
  }
  return "# Completion of quillpress for bash.\n_quillpress() {\n  local "
         "present=\"${COMP_WORDS[COMP_CWORD]}\"\n"
         "  COMPREPLY=()\n  case \"${COMP_WORDS[COMP_CWORD-1]}\" in\n" +
         cases + "  esac\n  if [[ $present == -* ]]; then\n    COMPREPLY=($(compgen -W " +
         inQuotes(joined(names)) +
         " -- \"$present\"))\n  else\n    COMPREPLY=($(compgen -f -- \"$present\"))\n  fi\n}\n"
         "complete -o filenames -F _quillpress quillpress\n";
}

std::string zshCompletion() {
  std::string text = "#compdef quillpress\n# Completion of quillpress for zsh.\n_arguments -s \\\n";
  for (const OptionRow& option : optionTable()) {
    const std::string what = "[" + zshText(option.summary()) + "]" + zshAction(option);
    if (option.shortName.empty()) {
      text += "  " + inQuotes(option.longName + what) + " \\\n";
    } else {
      text += "  '(" + option.shortName + " " + option.longName + ")'{" + option.shortName + "," +
              option.longName + "}" + inQuotes(what) + " \\\n";
    }
  }
  return text + "  '*:job:_files'\n";
}

std::string fishCompletion() {
  std::string text = "# Completion of quillpress for fish.\n";
  for (const OptionRow& option : optionTable()) {
    text += "complete -c quillpress -l " + option.longName.substr(2);
    if (!option.shortName.empty()) text += " -s " + option.shortName.substr(1);
    if (!option.values.empty()) text += option.takesFile() ? " -r -F" : " -x";
    if (option.takesFolder()) text += " -a '(__fish_complete_directories)'";
    if (!option.choices().empty()) text += " -a " + inQuotes(joined(option.choices()));
    text += " -d " + inQuotes(option.summary()) + "\n";
  }
  return text;
}

}  // namespace quillpress::cli
