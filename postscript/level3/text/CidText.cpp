#include "postscript/level3/text/CidText.h"

#include <fstream>
#include <map>
#include <vector>

#include "postscript/level3/text/FontEntries.h"

namespace quillpress::level3 {

namespace {

constexpr std::string_view kFolder = "/usr/share/poppler/cidToUnicode/";

// A line a CID: its characters in hexadecimal, the usual one first, separated by commas.
std::vector<char32_t> readCollection(const std::string& name) {
  std::vector<char32_t> characters;
  std::ifstream file(std::string(kFolder) + name);
  for (std::string line; std::getline(file, line);) {
    constexpr int kHexadecimal = 16;
    characters.push_back(static_cast<char32_t>(std::strtoul(line.c_str(), nullptr, kHexadecimal)));
  }
  return characters;
}

// Each collection is read once, however many fonts have it.
const std::vector<char32_t>& collectionOf(const std::string& name) {
  thread_local std::map<std::string, std::vector<char32_t>> collections;
  const auto known = collections.find(name);
  if (known != collections.end()) return known->second;
  return collections.emplace(name, readCollection(name)).first->second;
}

bool isPlain(std::string_view name) {
  return !name.empty() && name.find_first_of("/.") == std::string_view::npos;
}

}  // namespace

std::u32string textOfCid(Interpreter& interpreter, const Object& font, std::uint32_t cid) {
  const Object system = FontEntries(interpreter, font).dictionary("CIDSystemInfo");
  if (system.isNull()) return {};
  const FontEntries entries(interpreter, system);
  const std::string_view registry = entries.text("Registry");
  const std::string_view ordering = entries.text("Ordering");
  if (!isPlain(registry) || !isPlain(ordering) || ordering == "Identity") return {};
  const std::vector<char32_t>& characters = collectionOf(std::string(registry) + '-' + std::string(ordering));
  if (cid >= characters.size() || characters[cid] == 0) return {};
  return std::u32string(1, characters[cid]);
}

}  // namespace quillpress::level3
