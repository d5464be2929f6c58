// Prints a dictionary for fuzzers of programs: every name that a converter knows when it is opened, and what
// else the language is made of.

#include <cstdio>
#include <set>
#include <string>
#include <string_view>

#include "postscript/lib/pdf/Postscript2Pdf.h"

namespace {

using quillpress::DictionaryObject;

constexpr std::string_view kSyntax[] = {
    "{",  "}",     "[",      "]",   "(",    ")",    "<",  ">", "<~",    "~>",    "/",    "//", "%",
    "\\", "\\101", "\\\r\n", "16#", "36#Z", "-0.5", "e9", "+", "1e308", "{pop}", "{()}", "\f"};

// Keys that operators look for in dictionaries of a job.
constexpr std::string_view kKeys[] = {"/Width",      "/Height",     "/BitsPerComponent",
                                      "/Decode",     "/DataSource", "/MultipleDataSources",
                                      "/PaintType",  "/BBox",       "/XStep",
                                      "/YStep",      "/PaintProc",  "/FontName",
                                      "/FontMatrix", "/DeviceGray", "/DeviceRGB",
                                      "/DeviceCMYK", "/Pattern",    "/SubFileDecode",
                                      "/endString",  "/Helvetica"};

void print(std::string_view word) {
  std::printf("\"");
  for (const char c : word) {
    if (c == '"' || c == '\\' || c < ' ' || c > '~') {
      std::printf("\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
    } else {
      std::printf("%c", c);
    }
  }
  std::printf("\"\n");
}

void addNames(const DictionaryObject& dictionary, std::set<std::string>& names) {
  for (std::size_t i = 0; i < dictionary.count(); ++i) {
    names.insert(std::string(dictionary.entryInOrder(i).key));
  }
}

}  // namespace

int main() {
  quillpress::Postscript2Pdf converter{quillpress::Matrix()};
  const quillpress::DictionarySet& dictionaries = converter.interpreter().dictionaries();
  std::set<std::string> names;
  addNames(dictionaries.systemDictionary(), names);
  addNames(dictionaries.globalDictionary(), names);
  addNames(dictionaries.userDictionary(), names);
  std::printf("# Made by fuzz_dictionary; a test compares.\n");
  for (const std::string& name : names) print(name);
  for (const std::string_view word : kSyntax) print(word);
  for (const std::string_view word : kKeys) print(word);
}
