// Image jobs made by choice: sizes, bits, sources of every kind that bring their data in pieces of every
// size, whole and cut. Content and objects must be equal, and an object holds all the data that was gathered.

#include <string>

#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Choices.h"
#include "tests/fuzz/support/Cuts.h"
#include "tests/fuzz/support/OpenConverter.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

namespace {

constexpr int kSizes[] = {0, 1, 2, 3, 7, 8, 20, 63, 64, 65, 100, 4001, 65536, -1, 2147483647};
constexpr int kBits[] = {1, 2, 4, 8, 12, 16, 0, -8};
constexpr std::string_view kHexDigits = "0123456789abcdef";

std::string hexOf(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    text += kHexDigits[static_cast<unsigned char>(byte) / 16];
    text += kHexDigits[static_cast<unsigned char>(byte) % 16];
  }
  return text;
}

// A job in the making, and the data that its sources read from behind the operator.
struct ImageJob {
  std::string program;
  std::string inlineData;
};

// Strings of a length that may or may not divide the image's.
std::string source(Choices& choices, ImageJob& job) {
  const std::string length = std::to_string(choices.below(300));
  switch (choices.below(9)) {
    case 0:
      return "<" + hexOf(choices.bytes(choices.below(64))) + ">";
    case 1:
      return "{<" + hexOf(choices.bytes(choices.below(64))) + ">}";
    case 2:
      return "{" + length + " string}";
    case 3:
      job.inlineData += choices.bytes(choices.below(600));
      return "{currentfile " + length + " string readstring pop}";
    case 4:
      job.inlineData += hexOf(choices.bytes(choices.below(600)));
      return "{currentfile " + length + " string readhexstring pop}";
    case 5:
      return "[{" + length + " string}]";
    case 6:
      return "{()}";
    case 7:
      return "{<~" + std::string(choices.below(30), 'z') + "~>}";
    default:
      return "{/n n 1 add def n 7 mod string}";
  }
}

std::string sources(Choices& choices, ImageJob& job, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += source(choices, job) + ' ';
  return text;
}

std::string sizes(Choices& choices) {
  const std::string width = std::to_string(choices.oneOf(kSizes));
  const std::string height = std::to_string(choices.oneOf(kSizes));
  return width + ' ' + height + ' ' + std::to_string(choices.oneOf(kBits)) + " matrix ";
}

void addDictionaryImage(Choices& choices, ImageJob& job) {
  const std::size_t decodePairs = choices.below(5);
  job.program += "9 dict dup /Width " + std::to_string(choices.oneOf(kSizes)) + " put dup /Height " +
                 std::to_string(choices.oneOf(kSizes)) + " put dup /BitsPerComponent " +
                 std::to_string(choices.oneOf(kBits)) + " put dup /Decode [";
  for (std::size_t i = 0; i < decodePairs; ++i) job.program += "0 1 ";
  job.program += "] put dup /DataSource ";
  const bool isMultiple = choices.flag();
  job.program += isMultiple ? "[" + sources(choices, job, choices.below(5)) + "]" : source(choices, job);
  job.program += " put ";
  if (isMultiple) job.program += "dup /MultipleDataSources true put ";
  job.program += "image\n";
}

void addImage(Choices& choices, ImageJob& job) {
  job.inlineData.clear();
  switch (choices.below(5)) {
    case 0:
      job.program += sizes(choices) + source(choices, job) + " image\n";
      break;
    case 1: {
      const std::size_t components = choices.below(6);
      job.program +=
          sizes(choices) + source(choices, job) + " false " + std::to_string(components) + " colorimage\n";
      break;
    }
    case 2: {
      const std::size_t components = choices.below(6);
      job.program += sizes(choices) + sources(choices, job, components) + "true " +
                     std::to_string(components) + " colorimage\n";
      break;
    }
    case 3:
      addDictionaryImage(choices, job);
      break;
    default:
      job.program += std::to_string(choices.oneOf(kSizes)) + ' ' + std::to_string(choices.oneOf(kSizes)) +
                     (choices.flag() ? " true" : " false") + " matrix " + source(choices, job) +
                     " imagemask\n";
      break;
  }
  job.program += job.inlineData;
  if (choices.flag()) job.program += "\n";
}

std::string program(Choices& choices) {
  constexpr std::string_view kColours[] = {"",
                                           "0.5 setgray ",
                                           "1 0 0 setrgbcolor ",
                                           "0 0 0 1 setcmykcolor ",
                                           "0 1 1 sethsbcolor ",
                                           "/Pattern setcolorspace "};
  ImageJob job;
  job.program = "/n 0 def ";
  for (std::size_t images = 1 + choices.below(4); images > 0; --images) {
    job.program += choices.oneOf(kColours);
    addImage(choices, job);
  }
  return job.program;
}

// Every object is an image here, and stands in the content by its name, unless the job failed later.
void checkNames(const Result& result) {
  std::size_t names = 0;
  for (std::size_t at = result.objects.find("/PSI"); at != std::string::npos;
       at = result.objects.find("/PSI", at + 1)) {
    ++names;
  }
  if (names == 0) FUZZ_CHECK(result.objects.empty());
}

}  // namespace

void runImages(Input input) {
  Choices choices(input);
  const std::uint8_t way = choices.byte();
  const std::string text = program(choices);
  Job job;
  job.chunks = {text};
  Result whole = convertInOpenConverter(job);
  if (!whole.isComplete) return;
  checkNames(whole);
  job.chunks = cutInto(text, way);
  Result cut = convertInOpenConverter(job);
  if (!cut.isComplete) return;
  if (!whole.errors.empty()) whole.content.clear();
  if (!cut.errors.empty()) cut.content.clear();
  checkEqual(whole, cut);
}

}  // namespace quillpress::fuzz
