#include "tests/fuzz/support/OpenConverter.h"

#include <quillpress/converter.h>

#include <algorithm>
#include <memory>

#include "postscript/lib/base/Ex.h"
#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Steps.h"
#include "tests/heap/Heap.h"

namespace quillpress::fuzz {

namespace {

// Enough for any program of interest that fits into an input; a program beyond them is given up.
constexpr std::int64_t kSteps = 1'000'000;
constexpr std::size_t kBytesAtOnce = std::size_t{16} << 20U;
constexpr std::size_t kBytesInAll = std::size_t{128} << 20U;

// The bytes of a chunk, alone and only as long as the call: reads before, behind or later are found.
std::unique_ptr<char[]> alone(std::string_view chunk) {
  std::unique_ptr<char[]> bytes(new char[chunk.size()]);
  std::ranges::copy(chunk, bytes.get());
  return bytes;
}

std::string textOfOperands(Interpreter& interpreter) {
  std::string text;
  const ObjectStack& operands = interpreter.operandStack();
  for (std::ptrdiff_t i = 0; i < static_cast<std::ptrdiff_t>(operands.count()); ++i) {
    try {
      text += operands.at(i)->printString() + '\n';
    } catch (const Ex& error) {  // an array within itself, say
      text += error.message() + '\n';
    }
  }
  return text;
}

std::string textOfObjects() {
  std::string text;
  PdfObjectList& objects = PdfObjectList::ofProcess();
  ::PdfObject** records = objects.snapshot();
  for (std::size_t i = 0; i < objects.count(); ++i) {
    const ::PdfObject& record = *records[i];
    text.append(record.name).append(" ").append(record.dictionary).append("\n");
    if (record.data != nullptr) text.append(record.data, record.dataLength);
  }
  return text;
}

// False when the chunk fails.
bool convertChunk(Postscript2Pdf& converter, std::string_view chunk, Result& result) {
  const auto bytes = alone(chunk);
  if (converter.convert(bytes.get(), static_cast<int>(chunk.size()))) {
    result.content += converter.pageContent();
    return true;
  }
  result.errors += converter.errorText();
  return false;
}

void convert(Postscript2Pdf& converter, const Job& job, Result& result) {
  try {
    for (const std::string_view chunk : job.chunks) {
      if (!convertChunk(converter, chunk, result) && !job.goesOn) break;
    }
    result.operands = textOfOperands(converter.interpreter());
    result.objects = textOfObjects();
  } catch (const std::bad_alloc&) {
    result.isComplete = false;
  }
}

void prepare(Postscript2Pdf& converter, std::string_view text) {
  if (!text.empty()) FUZZ_CHECK(converter.convert(text.data(), static_cast<int>(text.size())));
}

// The moment after something was opened.
template <typename Open>
class Moment {
 public:
  explicit Moment(Open open) : checkpoint_(open) {
    PdfObjectList& objects = PdfObjectList::ofProcess();
    checkpoint_.add(&objects, sizeof objects);
  }

  // Goes back after the action; false when that ran out of something.
  template <typename Action>
  bool use(Action action) {
    bool isDone = false;
    {
      heap::Watch watch;
      watch.bound(kBytesAtOnce, kBytesInAll);
      isDone = Steps::within(kSteps, action) && !watch.hasFailed();
    }
    checkpoint_.goBack();
    return isDone;
  }

 private:
  heap::Checkpoint checkpoint_;
};

struct Conversion {
  const Job& job;
  Result result;
};

void convertForContext(Postscript2Pdf& converter, void* context) {
  auto& conversion = *static_cast<Conversion*>(context);
  // Never deleted, since a jump may leave it in the middle of a change: it goes with what the converter made.
  auto& made = *new Result;
  prepare(converter, conversion.job.preparation);
  convert(converter, conversion.job, made);
  Steps::countNoMore();
  const heap::Unwatched unwatched;
  conversion.result = made;
}

}  // namespace

bool useOpenConverter(void (*action)(Postscript2Pdf& converter, void* context), void* context) {
  static Postscript2Pdf* converter = nullptr;
  static auto& opened = *new Moment([] { converter = new Postscript2Pdf(Matrix()); });
  return opened.use([&] { action(*converter, context); });
}

bool useOpenHandles(void (*action)(void* (&handles)[2], void* context), void* context) {
  static void* opened[2] = {};
  static auto& moment = *new Moment([] {
    for (void*& handle : opened) handle = PSOpen(nullptr);
  });
  void* handles[2] = {opened[0], opened[1]};
  return moment.use([&] { action(handles, context); });
}

Result convertInOpenConverter(const Job& job) {
  Conversion conversion{job, {}};
  if (!useOpenConverter(convertForContext, &conversion)) conversion.result.isComplete = false;
  return std::move(conversion.result);
}

Result convertInNewConverter(const Job& job) {
  heap::Watch watch;
  const std::size_t before = watch.left();
  Result result;
  {
    Result made;
    auto converter = std::make_unique<Postscript2Pdf>(Matrix());
    prepare(*converter, job.preparation);
    watch.bound(kBytesAtOnce, kBytesInAll);
    convert(*converter, job, made);
    watch.bound(SIZE_MAX, SIZE_MAX);
    const heap::Unwatched unwatched;
    result = made;
  }
  PdfObjectList::ofProcess() = PdfObjectList();
  FUZZ_CHECK(watch.left() == before);
  if (watch.hasFailed()) result.isComplete = false;
  return result;
}

void checkEqual(const Result& left, const Result& right) {
  FUZZ_CHECK_EQUAL(left.errors, right.errors);
  FUZZ_CHECK_EQUAL(left.content, right.content);
  FUZZ_CHECK_EQUAL(left.operands, right.operands);
  FUZZ_CHECK_EQUAL(left.objects, right.objects);
}

}  // namespace quillpress::fuzz
