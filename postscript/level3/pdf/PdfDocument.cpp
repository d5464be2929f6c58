#include "postscript/level3/pdf/PdfDocument.h"

#include <algorithm>

#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kPagesInGroup = 50;

// One character of UTF-8 at the front, which is removed; nothing when the bytes are none.
std::optional<char32_t> takeUtf8(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t count = first < 0x80 ? 1U : (first >= 0xF0 ? 4U : (first >= 0xE0 ? 3U : 2U));
  if (first >= 0x80 && first < 0xC2) return std::nullopt;
  if (first > 0xF4 || text.size() < count) return std::nullopt;
  char32_t code = count == 1 ? first : first & (0xFFU >> (count + 1));
  for (std::size_t index = 1; index < count; ++index) {
    const auto byte = static_cast<unsigned char>(text[index]);
    if ((byte & 0xC0) != 0x80) return std::nullopt;
    code = code << 6 | (byte & 0x3FU);
  }
  text.remove_prefix(count);
  return code;
}

void appendUtf16(std::string& text, char32_t code) {
  const auto unit = [&text](char32_t value) {
    text += static_cast<char>(value >> 8 & 0xFF);
    text += static_cast<char>(value & 0xFF);
  };
  if (code < 0x10000) {
    unit(code);
    return;
  }
  unit(0xD800 + ((code - 0x10000) >> 10));
  unit(0xDC00 + ((code - 0x10000) & 0x3FF));
}

void replaceOrAdd(auto& entries, std::string_view key, std::string_view value) {
  const auto found =
      std::find_if(entries.begin(), entries.end(), [&](const auto& entry) { return entry.key == key; });
  if (found != entries.end()) {
    found->value = value;
  } else {
    entries.push_back({std::string(key), std::string(value)});
  }
}

std::string listOf(const std::vector<ObjectNumber>& numbers) {
  std::string text = "[";
  for (const ObjectNumber number : numbers) {
    if (text.size() > 1) text += ' ';
    appendReference(text, number);
  }
  return text + "]";
}

}  // namespace

std::string pdfText(std::string_view text) {
  const bool isAscii =
      std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<signed char>(byte) >= 0; });
  if (isAscii || text.starts_with("\xFE\xFF")) return std::string(text);
  std::string result = "\xFE\xFF";
  std::string_view rest = text;
  if (rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
  while (!rest.empty()) {
    const std::optional<char32_t> code = takeUtf8(rest);
    if (!code) return std::string(text);
    appendUtf16(result, *code);
  }
  return result;
}

ObjectNumber PdfDocument::pageObject(std::size_t page) {
  while (pageObjects_.size() <= page) pageObjects_.push_back(file_.reserve());
  return pageObjects_[page];
}

void PdfDocument::addPage(const PageParts& parts) {
  if (group_.number == 0) group_.number = file_.reserve();
  const ObjectNumber number = pageObject(pageCount_++);
  DictionaryText page;
  page.name("Type", "Page").reference("Parent", group_.number).box("MediaBox", parts.mediaBox);
  if (parts.cropBox) page.box("CropBox", *parts.cropBox);
  if (parts.contents.size() == 1) page.reference("Contents", parts.contents[0]);
  if (parts.contents.size() > 1) page.entry("Contents", listOf(parts.contents));
  page.entry("Resources", parts.resources);
  if (!parts.annotations.empty()) page.entry("Annots", listOf(parts.annotations));
  file_.write(number, "<<" + page.entries() + parts.entries + ">>");
  if (group_.count != 0) group_.kids += ' ';
  appendReference(group_.kids, number);
  if (++group_.count == kPagesInGroup) finishGroup();
}

void PdfDocument::finishGroup() {
  if (group_.count == 0) return;
  DictionaryText node;
  node.name("Type", "Pages")
      .reference("Parent", pages_)
      .integer("Count", static_cast<std::int64_t>(group_.count));
  node.entry("Kids", "[" + group_.kids + "]");
  file_.write(group_.number, node.text());
  if (!groups_.empty()) groups_ += ' ';
  appendReference(groups_, group_.number);
  group_ = {};
}

void PdfDocument::writePages() {
  finishGroup();
  DictionaryText node;
  node.name("Type", "Pages")
      .integer("Count", static_cast<std::int64_t>(pageCount_))
      .entry("Kids", "[" + groups_ + "]");
  file_.write(pages_, node.text());
}

void PdfDocument::setInformation(std::string_view key, std::string_view value) {
  replaceOrAdd(information_, key, value);
}

void PdfDocument::setInformationUnlessSet(std::string_view key, std::string_view value) {
  const bool isSet = std::any_of(information_.begin(), information_.end(),
                                 [key](const Entry& entry) { return entry.key == key; });
  if (!isSet) setInformation(key, value);
}

void PdfDocument::setCatalogueEntry(std::string_view key, std::string_view value) {
  replaceOrAdd(catalogue_, key, value);
}

void PdfDocument::addDestination(std::string_view name, std::string_view destination) {
  destinations_.insert_or_assign(std::string(name), std::string(destination));
}

ObjectNumber PdfDocument::writeDestinations() {
  std::string names = "[";
  for (const auto& [name, destination] : destinations_) {
    appendString(names, name);
    names += destination;
  }
  return file_.add(DictionaryText().entry("Names", names + "]").text());
}

ObjectNumber PdfDocument::writeInformation() {
  if (information_.empty()) return 0;
  DictionaryText text;
  for (const Entry& entry : information_) {
    if (entry.key == "Trapped") {
      text.name(entry.key, entry.value);
    } else {
      text.string(entry.key, pdfText(entry.value));
    }
  }
  return file_.add(text.text());
}

void PdfDocument::finish() {
  writePages();
  DictionaryText root;
  root.name("Type", "Catalog").reference("Pages", pages_);
  if (!outline_.isEmpty()) root.reference("Outlines", outline_.write(file_));
  if (!destinations_.empty()) {
    root.entry("Names", DictionaryText().reference("Dests", writeDestinations()).text());
  }
  if (metadata_ != 0) root.reference("Metadata", metadata_);
  for (const Entry& entry : catalogue_) root.entry(entry.key, entry.value);
  file_.write(root_, root.text());
  const ObjectNumber information = writeInformation();
  file_.finish(root_, information);
}

}  // namespace quillpress::level3
