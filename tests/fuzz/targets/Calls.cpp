// The six functions called in any order on two handles, as a host with two jobs might, or one that errs. What
// one handle does must not show in the other, but for the list of objects, which they share.

#include <quillpress/converter.h>

#include <cstring>
#include <string>

#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Choices.h"
#include "tests/fuzz/support/OpenConverter.h"
#include "tests/fuzz/support/Steps.h"
#include "tests/fuzz/support/Target.h"
#include "tests/heap/Heap.h"

namespace quillpress::fuzz {

namespace {

constexpr std::size_t kMostCalls = 40;

// So that there is something to disturb.
constexpr std::string_view kPhrases[] = {
    "10 20 moveto 30 40 lineto ",
    "stroke ",
    "gsave 2 2 scale ",
    "grestore ",
    "save ",
    "restore ",
    "/a 7 def ",
    "a ",
    "pop ",
    "clear ",
    "/a { 1 add } def ",
    "currentfile 9 string readstring ",
    "(text",
    ") ",
    "{ 3 4 ",
    "} ",
    "} repeat ",
    "5 dict begin ",
    "end ",
    "0.5 setgray ",
    "2 2 8 matrix {(abcd)} image ",
    "100 100 8 matrix {currentfile 100 string readhexstring pop} image ",
    "8 8 8 matrix {64 string} image ",
    R"(9 dict dup /BBox [0 0 8 8] put dup /XStep 8 put dup /YStep 8 put dup /PaintType 1 put
       dup /PaintProc {pop 0 0 4 4 rectfill} put matrix makepattern setpattern )",
};

struct Calls {
  Input input;
  bool onlyFirst;  // leaves out what concerns the second handle
  bool hasObjects;
  std::string story;  // what the first handle's calls gave
};

class Caller {
 public:
  Caller(void* (&handles)[2], const Calls& calls) : handles_(handles), choices_(calls.input), calls_(calls) {}

  void run() {
    for (std::size_t i = 0; i < kMostCalls && !choices_.atEnd(); ++i) call();
  }

  [[nodiscard]] const std::string& story() const { return story_; }
  [[nodiscard]] bool hasObjects() const { return hasObjects_; }

 private:
  void call() {
    const std::uint8_t decision = choices_.byte();
    handle_ = (decision & 1U) != 0 ? 1 : 0;
    isCalled_ = handle_ == 0 || !calls_.onlyFirst;
    switch (decision / 2 % 16) {
      case 10:
        startPage();
        break;
      case 11:
        takeObjects();
        break;
      case 12:
        tell(isCalled_ ? PSGetErrorStr(handles_[handle_]) : "");
        break;
      case 13:
        closeHandle();
        break;
      case 14:
        callWithoutHandle();
        break;
      default:
        convert();
        break;
    }
  }

  void tell(std::string_view text) {
    if (handle_ == 0) story_.append(text).append("\n");
  }

  std::string chunk() {
    std::string text;
    for (std::size_t i = 1 + choices_.below(4); i > 0; --i) {
      if (choices_.below(4) == 0) {
        text += choices_.bytes(choices_.below(40));
      } else {
        text += choices_.oneOf(kPhrases);
      }
    }
    return text;
  }

  // With its length, up to a zero byte, or without any data.
  void convert() {
    const std::string text = chunk();
    const std::uint8_t way = choices_.byte();
    if (!isCalled_) return;
    void* const handle = handles_[handle_];
    const bool isTerminated = way % 8 == 1;
    const int lengthBefore = isTerminated ? -1 - way : static_cast<int>(text.size());
    int length = lengthBefore;
    const char* content = PSConvertToPdf(handle, way % 32 == 0 ? nullptr : text.c_str(), &length);
    if (content == nullptr) {
      FUZZ_CHECK(length == lengthBefore);
      tell("no content");
      return;
    }
    FUZZ_CHECK(handle != nullptr && length >= 0 && content[length] == '\0');
    tell({content, static_cast<std::size_t>(length)});
  }

  void startPage() {
    float matrix[6];
    for (float& each : matrix)
      each = choices_.flag() ? choices_.number<float>() : static_cast<float>(choices_.byte());
    const bool isNull = choices_.below(8) == 0;
    if (isCalled_) PSStartPage(handles_[handle_], isNull ? nullptr : matrix);
  }

  // Every byte that a host may look at.
  void takeObjects() {
    if (!isCalled_) return;
    unsigned count = 0;
    PdfObject** objects = PSGetPdfObjects(handles_[handle_], &count);
    FUZZ_CHECK(objects != nullptr && objects[count] == nullptr);
    if (count > 0) hasObjects_ = true;
    for (unsigned i = 0; i < count; ++i) {
      const PdfObject& object = *objects[i];
      FUZZ_CHECK(object.name[0] == '/' && std::strlen(object.dictionary) > 0 && object.content[0] == '\0');
      FUZZ_CHECK(object.kind == PDF_OBJECT_IMAGE || object.kind == PDF_OBJECT_PATTERN);
      FUZZ_CHECK(object.reserved[0] == 0 && object.reserved[1] == 0 && object.reservedPointer == nullptr);
      unsigned sum = 0;
      for (std::uint32_t at = 0; at < object.dataLength; ++at)
        sum += static_cast<unsigned char>(object.data[at]);
      sum_ = sum_ + sum;
    }
    PSGetPdfObjects(handles_[handle_], nullptr);
  }

  // Once for each handle, and a new one only for the first: opening is slow.
  void closeHandle() {
    const bool isReopened = choices_.flag() && handle_ == 0 && !hasReopened_;
    if (!isCalled_) return;
    PSClose(handles_[handle_]);
    handles_[handle_] = nullptr;
    if (!isReopened) return;
    hasReopened_ = true;
    const float matrix[6] = {2, 0, 0, 2, 0, 0};
    handles_[handle_] = PSOpen(matrix);
  }

  static void callWithoutHandle() {
    int length = 1;
    unsigned count = 7;
    FUZZ_CHECK(PSConvertToPdf(nullptr, "1", &length) == nullptr && length == 1);
    FUZZ_CHECK(PSGetPdfObjects(nullptr, &count) != nullptr && count == 0);
    FUZZ_CHECK(PSGetErrorStr(nullptr)[0] == '\0');
    PSStartPage(nullptr, nullptr);
    PSClose(nullptr);
  }

  void* (&handles_)[2];
  Choices choices_;
  const Calls& calls_;
  std::size_t handle_ = 0;
  bool isCalled_ = true;
  bool hasReopened_ = false;
  bool hasObjects_ = false;
  volatile unsigned sum_ = 0;  // so that the bytes are really read
  std::string story_;
};

void makeCalls(void* (&handles)[2], void* context) {
  auto& calls = *static_cast<Calls*>(context);
  try {
    auto& caller = *new Caller(handles, calls);
    caller.run();
    Steps::countNoMore();
    const heap::Unwatched unwatched;
    calls.story = caller.story();
    calls.hasObjects = caller.hasObjects() || PdfObjectList::ofProcess().count() > 0;
  } catch (const std::bad_alloc&) {  // of the caller's own texts; the functions let none out
    return;
  }
}

}  // namespace

void runCalls(Input input) {
  Calls together{input, false, false, {}};
  if (!useOpenHandles(makeCalls, &together) || together.hasObjects) return;
  Calls alone{input, true, false, {}};
  if (useOpenHandles(makeCalls, &alone)) FUZZ_CHECK_EQUAL(together.story, alone.story);
}

}  // namespace quillpress::fuzz
