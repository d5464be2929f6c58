// The tokens of a text, whole and cut. The last byte tells how it is cut.

#include "postscript/lib/base/Ex.h"
#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Cuts.h"
#include "tests/fuzz/support/OpenConverter.h"
#include "tests/fuzz/support/Steps.h"
#include "tests/fuzz/support/Target.h"
#include "tests/heap/Heap.h"

namespace quillpress::fuzz {

namespace {

struct Tokens {
  std::vector<std::string_view> chunks;
  std::string texts;
};

std::string textOf(const PostscriptObject& token) {
  std::string text =
      token.describe() + (token.executable ? " executable " : " literal ") + token.printString();
  if (const auto* string = as<StringObject>(&token)) {
    for (const std::string& filter : string->data().decodeFilters()) text += " /" + filter;
    text += ' ' + string->data().asHeld();
  }
  return text + '\n';
}

// The texts of all tokens up to the first error, and that.
std::string textsOf(Parser& parser, const std::vector<std::string_view>& chunks) {
  std::string texts;
  try {
    for (const std::string_view chunk : chunks) {
      const std::vector<char> alone(chunk.begin(), chunk.end());
      parser.setInput(alone.data(), alone.size());
      while (const auto token = parser.nextToken()) texts += textOf(*token);
      parser.setInput("", 0);
    }
  } catch (const Ex& error) {
    texts += error.formatted();
  } catch (const std::bad_alloc&) {
    texts += "no memory\n";
  }
  return texts;
}

void takeTokens(Postscript2Pdf& converter, void* context) {
  auto& tokens = *static_cast<Tokens*>(context);
  const std::string texts = textsOf(converter.interpreter().parser(), tokens.chunks);
  Steps::countNoMore();
  const heap::Unwatched unwatched;
  tokens.texts = texts;
}

}  // namespace

void runTokenizer(Input input) {
  if (input.empty()) return;
  const std::string_view text(reinterpret_cast<const char*>(input.data()), input.size() - 1);
  Tokens whole{{text}, {}};
  if (!useOpenConverter(takeTokens, &whole)) return;
  Tokens cut{cutInto(text, input.back()), {}};
  if (useOpenConverter(takeTokens, &cut)) FUZZ_CHECK_EQUAL(whole.texts, cut.texts);
}

}  // namespace quillpress::fuzz
