#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quillpress::cli {

// Names of files are UTF-8 in the program, or whatever bytes the system has them in where it does not care.

// `name` as the system takes it.
std::filesystem::path pathOf(const std::string& name);
// And back.
std::string utf8Of(const std::filesystem::path& path);

// A text that is the same for all spellings which the system takes for one name.
std::string comparableName(const std::filesystem::path& path);

// The place behind symbolic links; `path` itself where there is none.
std::string whereLinksLead(const std::string& path);

// The arguments of the program as names and texts.
std::vector<std::string> programArguments(int argc, const char* const* argv);

// The files that an argument like "*.ps" stands for, in order, where the shell has left that to programs;
// otherwise, and when there are none, the argument as it is.
std::vector<std::string> expanded(const std::string& argument);

// A folder for files that nobody is to see.
std::string temporaryFolder();

}  // namespace quillpress::cli
