#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "postscript/level3/interpreter/File.h"
#include "postscript/level3/interpreter/FileAccess.h"
#include "postscript/level3/interpreter/ObjectStack.h"
#include "postscript/level3/interpreter/Operator.h"
#include "postscript/level3/interpreter/Random.h"
#include "postscript/level3/objects/VirtualMemory.h"
#include "postscript/level3/scanner/Scanner.h"

namespace quillpress::level3 {

// The language's machine: stacks, execution, errors.
//
// How a folder adds operators
// ---------------------------
// A family is a file with functions and a table, and one function that hands the table over:
//
//   // num1 num2 -> product
//   void multiplyBy(Interpreter& interpreter) {
//     auto& operands = interpreter.operands();
//     const double product = operands.top(1).asNumber() * operands.top(0).asNumber();
//     if (product > kMost) raise(ErrorName::kUndefinedResult);   // checks first, nothing popped yet
//     operands.pop();
//     operands.top() = Object::real(static_cast<float>(product));
//   }
//
//   constexpr OperatorRow kRows[] = {{"multiplyby", "num num", multiplyBy}};
//
//   void addProductOperators(Interpreter& interpreter) { interpreter.addOperators(kRows); }
//
// - When the function is called, the operands are there and have the types that the row names. Whatever else
// can be
//   wrong is checked before the first pop, and reported with raise(): the run loop turns it into the
//   language's error.
// - State that outlives a call belongs into an Extension, one slot a folder:
// interpreter.extension<GraphicsState>().
//   Objects of the language that it holds are shown in trace(), and it hears of save and restore.
// - Writing into arrays and dictionaries goes through memory(), which keeps the journal for restore.
// - Values live until the next collection, and that comes only between two objects of the job. So C++
// variables may
//   hold objects, except across runAndWait(): there they stay on the operand stack, or in a Rooted.
// - Names that C++ code asks for again and again are interned once: Name* bbox = memory().name("BBox").
//
// Running a procedure of the job
// ------------------------------
// An operator that runs a procedure as its last act pushes it: execution().push(procedure). One that must go
// on afterwards pushes a frame below it: its data, then an internal operator (addInternal) that continues the
// work; for OperatorKind::kLoop the frame stays in place until the operator takes it away, and `exit` takes
// it away too.
//
// Only where C++ code cannot be cut in two - a stream that reads from a procedure, a glyph or a pattern in
// the middle of painting - runAndWait() runs it in a nested loop. It returns when the procedure has ended.
// `stop`, `quit` and the like leave it as C++ exceptions, so what holds resources must hold them in objects
// with destructors.
class Interpreter {
 public:
  static constexpr std::size_t kMaxOperands = 500'000;
  static constexpr std::size_t kMaxExecution = 100'000;
  // How deep runAndWait() may nest.
  static constexpr int kMaxNesting = 60;

  // State of another folder. Destroyed with the interpreter, before the memory.
  class Extension : public Roots {
   public:
    virtual ~Extension() = default;
    void trace(Tracer& /*tracer*/) const override {}
    // Called after the save was made.
    virtual void onSave(std::uint32_t /*serial*/) {}
    // Called before the memory goes back to that save.
    virtual void onRestore(std::uint32_t /*serial*/) {}
  };

  // One for each folder that has state here.
  enum class Slot : std::uint8_t { kLanguage, kGraphics, kColour, kFonts, kImages, kDevice, kCount };

  // How a program ended.
  struct Outcome {
    enum class Kind {
      kDone,
      kQuit,     // `quit` was executed
      kStopped,  // `stop` without an error
      kError,    // an error that the program did not catch
      kAborted,  // from outside: interrupt(), or the time was up
    };
    Kind kind = Kind::kDone;
    std::string errorName;  // of kError and kAborted
    std::string command;    // what the error happened in
  };

  Interpreter();
  ~Interpreter();
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;

  VirtualMemory& memory() { return memory_; }
  ObjectStack& operands() { return operands_; }
  [[nodiscard]] const ObjectStack& operands() const { return operands_; }
  ObjectStack& execution() { return execution_; }
  [[nodiscard]] const ObjectStack& execution() const { return execution_; }
  DictionaryStack& dictionaries() { return memory_.dictionaryStack(); }
  [[nodiscard]] const DictionaryStack& dictionaries() const { return memory_.dictionaryStack(); }
  Scanner& scanner() { return scanner_; }
  Random& random() { return random_; }

  Dictionary& systemDictionary() { return *systemDictionary_; }
  Dictionary& globalDictionary() { return *globalDictionary_; }
  Dictionary& userDictionary() { return *userDictionary_; }
  Dictionary& errorDictionary() { return *errorDictionary_; }
  // $error
  Dictionary& errorState() { return *errorState_; }

  // ---- Building.

  // Defines the operators in systemdict.
  void addOperators(std::span<const OperatorRow> rows);
  // An operator without a name in systemdict, for the execution stack. `name` is what an error in it is said
  // to be in; `frameSize` counts its data and itself. The object stays valid as long as the interpreter. It
  // is found again by its function, in constant time.
  Object addInternal(std::string_view name, OperatorFunction function,
                     OperatorKind kind = OperatorKind::kPlain, std::size_t frameSize = 1);
  // One that a job may come by, and whose operands are therefore checked.
  Object addInternal(std::string_view name, OperatorFunction function, std::string_view operands);
  [[nodiscard]] Object internal(OperatorFunction function) const { return internals_.at(function); }
  // A value in systemdict.
  void define(std::string_view name, const Object& value);
  // Runs set-up text written in the language, in systemdict and global memory. Throws std::logic_error when
  // it fails.
  void runSetUp(std::string_view program);
  // To be called when all operators are there: systemdict becomes read-only.
  void finishSetUp();

  template <typename T, typename... Arguments>
  T& addExtension(Arguments&&... arguments) {
    auto made = std::make_unique<T>(std::forward<Arguments>(arguments)...);
    T& extension = *made;
    attach(T::kSlot, std::move(made));
    return extension;
  }
  // REQUIRES: it was added. T has `static constexpr Interpreter::Slot kSlot`.
  template <typename T>
  T& extension() {
    return static_cast<T&>(*extensions_[static_cast<std::size_t>(T::kSlot)]);
  }

  // ---- Running.

  // Runs a program from outside to its end, as a job: an error that it does not catch goes to handleerror,
  // and the outcome says so.
  Outcome run(const SourcePointer& program);

  // Runs one procedure, operator or other executable object from within an operator, and waits for its end.
  // The object finds its operands on the operand stack and leaves its results there. Throws limitcheck when
  // nested too deep; `stop` and `quit` pass through as exceptions of C++.
  void runAndWait(const Object& procedure);

  // Whether the operator that runs has taken its operands off the stack, so that procedures which give it
  // data may keep there what they like. Not so for operators that these run in turn.
  [[nodiscard]] bool hasOperandsAside() const { return hasOperandsAside_; }
  void setOperandsAside(bool isAside) { hasOperandsAside_ = isAside; }

  // Ends the program at the next chance, with this error's name; no `stopped` catches it. The only function
  // that another thread may call.
  void interrupt(ErrorName reason = ErrorName::kInterrupt) {
    interruption_.store(static_cast<int>(reason), std::memory_order_relaxed);
  }
  // For operators that take long, or that must not go on: throws when the program has been interrupted or its
  // time is up.
  void endIfInterrupted() const;
  void setDeadline(std::chrono::steady_clock::time_point deadline) { deadline_ = deadline; }

  // ---- Files.

  // The file object for a source or sink, in the memory that new values go to. `dependsOn` lives as long.
  Object newFile(SourcePointer source, std::span<const Object> dependsOn = {});
  Object newFile(SinkPointer sink, std::span<const Object> dependsOn = {});
  // The file that is being executed, or a null object.
  [[nodiscard]] Object currentFile() const;

  void setStandardFiles(SourcePointer input, SinkPointer output, SinkPointer errors);
  Object standardInput() const { return standardInput_; }
  Object standardOutput() const { return standardOutput_; }
  Object standardErrors() const { return standardErrors_; }
  // What `print` writes to.
  ByteSink& output() { return fileOf(standardOutput_).sink(); }

  // Which files of the machine the job may open.
  FileAccess& fileAccess() { return fileAccess_; }

  // ---- For operators of control.

  // Leaves the innermost loop. Throws invalidexit.
  void exitLoop();
  // Leaves the innermost `stopped` context.
  void stop();
  [[noreturn]] void quit();
  // Starts a `stopped` context around an object.
  void runStopped(const Object& object);
  // What default error handlers do: fills $error and stops. `command` is the object that failed.
  void recordError(Name* errorName, const Object& command);
  // The memory, the modes that come back with it, and all extensions.
  std::uint32_t saveState();
  // REQUIRES: memory().isOpenSave(serial), and nothing on the stacks is newer.
  void restoreState(std::uint32_t serial);

  // Lets unused values go as soon as no operator is running.
  void requestCollection() {
    isCollectionDue_ = true;
    patience_ = 0;
  }
  [[nodiscard]] std::chrono::steady_clock::time_point startTime() const { return startTime_; }

 private:
  class MachineRoots final : public Roots {
   public:
    explicit MachineRoots(const Interpreter& interpreter) : interpreter_(interpreter) {}
    void trace(Tracer& tracer) const override;

   private:
    const Interpreter& interpreter_;
  };

  // C++ exceptions that leave nested runs.
  struct Stop {};
  struct Quit {};
  struct Abort {
    ErrorName reason;
  };

  enum class Next { kObject, kAgain, kEnd };

  void runLoop();
  bool resume(const Object*& next, const Object*& end) const;
  Next takeNext(Object& object, const Object*& next, const Object*& end);
  Next scanFile(Object& object);
  Next scanString(Object& object);
  void call(const Operator& called);
  [[noreturn]] void rejectOperands(const Operator& called) const;
  void suspendProcedure(const Object* next, const Object* end);
  void enterHandler(ErrorName name, const Object& command);
  bool canRetry(ErrorName name, const Object& command);
  void housekeeping();
  void gatherOverflow(ErrorName name);
  void attach(Slot slot, std::unique_ptr<Extension> extension);
  Outcome outcomeOf(bool wasStopped);
  void callErrorHandler();
  void buildErrorDictionaries();
  Object stackArray(std::span<const Object> stack);

  VirtualMemory memory_;
  std::deque<Operator> operators_;  // addresses stay
  std::unordered_map<OperatorFunction, Object> internals_;
  Scanner scanner_;
  Random random_;
  ObjectStack operands_{kMaxOperands, ErrorName::kStackOverflow};
  ObjectStack execution_{kMaxExecution, ErrorName::kExecStackOverflow};
  MachineRoots roots_{*this};

  Dictionary* systemDictionary_;
  Dictionary* globalDictionary_;
  Dictionary* userDictionary_;
  Dictionary* errorDictionary_;
  Dictionary* errorState_;
  Object noStack_;                   // an empty array, there when there is no room for another
  std::vector<Object> keptObjects_;  // what C++ refers to for good

  Object stopped_;
  Object barrier_;
  FileAccess fileAccess_;
  Object standardInput_;
  Object standardOutput_;
  Object standardErrors_;

  // What save keeps beside the memory's contents.
  struct SavedModes {
    std::uint32_t serial;
    bool isGlobal;
    bool isPacking;
    int objectFormat;
  };
  std::vector<SavedModes> savedModes_;
  const std::chrono::steady_clock::time_point startTime_ = std::chrono::steady_clock::now();

  // Counts down at every procedure and turn of a loop; at 0 housekeeping() looks up.
  int patience_ = 0;
  bool wasCut_ = false;  // the execution stack was cut by exit or stop
  bool isCollectionDue_ = false;
  int nesting_ = 0;
  bool hasOperandsAside_ = false;
  std::atomic<int> interruption_{-1};
  std::optional<std::chrono::steady_clock::time_point> deadline_;

  std::array<std::unique_ptr<Extension>, static_cast<std::size_t>(Slot::kCount)> extensions_;
};

}  // namespace quillpress::level3
