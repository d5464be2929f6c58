#include "postscript/level3/document/DocumentJob.h"

#include <memory>

#include "postscript/level3/document/JobDate.h"
#include "postscript/level3/document/JobSource.h"
#include "postscript/level3/document/Machine.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

namespace {

using Crop = DocumentOptions::Crop;
using Status = DocumentResult::Status;

Machine::Files filesOf(const DocumentOptions& options) {
  const SinkPointer messages = options.messages ? options.messages : std::make_shared<NullSink>();
  return {std::make_shared<MemorySource>(Bytes()), messages, messages};
}

// Everything that one conversion needs, in the order in which it is made.
class Conversion {
 public:
  Conversion(const SourcePointer& job, Output& output, const DocumentOptions& options,
             const std::atomic<bool>& isCancelled)
      : options_(options),
        isCancelled_(isCancelled),
        machine_(output, filesOf(options), options.pageWidth, options.pageHeight),
        job_(std::make_shared<JobSource>(job, [this] { look(); })) {}

  DocumentResult run() {
    setUp();
    const Interpreter::Outcome outcome = interpreter_.run(job_);
    const bool hasFailed = outcome.kind == Interpreter::Outcome::Kind::kError ||
                           outcome.kind == Interpreter::Outcome::Kind::kAborted;
    if (hasFailed) describeError(outcome);
    // What goes wrong behind the end of a job that was cut off is no fault of its program.
    const bool isCutOff =
        outcome.kind != Interpreter::Outcome::Kind::kAborted && !job_->cutOffWithin().empty();
    finishPages(hasFailed);
    DocumentResult result = std::move(result_);
    result.isUnreadable = job_->isUnreadable();
    result.pages = device_.pagesShown();
    const bool isFault = hasFailed && (!isCutOff || result.pages == 0);
    if (!isFault) {
      result.error.clear();
      warn(result);
    }
    if (result.pages == 0) {
      result.status = Status::kNoPages;
      if (result.error.empty()) result.error = "the job shows no page";
      return result;
    }
    if (isFault) {
      result.status = Status::kFailed;
    } else if (!result.warnings.empty()) {
      result.status = Status::kIncomplete;
    }
    // A font that stands in for another is worth a line, but nothing is lost.
    result.substitutedFonts = machine_.fonts().substitutedFonts();
    for (std::string& line : machine_.fonts().warnings()) result.warnings.push_back(std::move(line));
    describeDocument();
    machine_.fonts().finish();
    document_.finish();
    return result;
  }

 private:
  void setUp() {
    if (options_.maxMemory) interpreter_.memory().setLimit(*options_.maxMemory);
    if (options_.collectionStep > 0) interpreter_.memory().collectEvery(options_.collectionStep);
    for (const std::string& folder : options_.readableFolders) interpreter_.fileAccess().allow(folder);
    graphics_.images() = {options_.imageQuality, options_.imageResolution};
    device_.turnPages(options_.turnsPages);
    if (options_.usesSecondThread) document_.file().deflateInSecondThread();
    interpreter_.scanner().listenToComments(
        [this](std::string_view comment) { device_.orientation().take(comment); });
    device_.onPage([this](std::size_t pages) {
      if (isCancelled_ || (options_.progress && !options_.progress(pages))) interpreter_.interrupt();
    });
    if (options_.timeoutSeconds) {
      const std::chrono::duration<double> time(*options_.timeoutSeconds);
      interpreter_.setDeadline(std::chrono::steady_clock::now() +
                               std::chrono::duration_cast<std::chrono::steady_clock::duration>(time));
    }
  }

  bool crops() const {
    if (options_.crop == Crop::kAlways) return true;
    return options_.crop == Crop::kWhenEncapsulated && job_->comments().isEncapsulated();
  }

  // Called when a piece of the job has come: the first one says what kind of job it is.
  void look() {
    if (isCancelled_) interpreter_.interrupt();
    if (hasLooked_ || !job_) return;
    hasLooked_ = true;
    if (!crops()) return;
    device_.turnPages(false);
    device_.holdLastPage();
    if (job_->comments().boundingBox()) device_.startCropped(*job_->comments().boundingBox());
  }

  void describeError(const Interpreter::Outcome& outcome) {
    result_.errorName = outcome.errorName;
    result_.errorPage = device_.pagesShown() + 1;
    result_.errorByte = job_->reached();
    std::string& text = result_.error;
    text = outcome.errorName;
    if (!outcome.command.empty()) text += ": " + outcome.command;
    text += ", page " + std::to_string(result_.errorPage);
    text += ", byte " + std::to_string(*result_.errorByte);
  }

  // An encapsulated picture need not show its page itself.
  void finishPages(bool hasFailed) {
    const bool isEncapsulated = crops();
    if (isEncapsulated && job_->comments().boundingBox()) device_.cropTo(*job_->comments().boundingBox());
    device_.finish(!hasFailed && isEncapsulated && device_.pagesShown() == 0);
  }

  void warn(DocumentResult& result) {
    const CommentScanner& comments = job_->comments();
    if (!job_->cutOffWithin().empty()) {
      result.warnings.push_back("the job ends within " + std::string(job_->cutOffWithin()) + ", page " +
                                std::to_string(result.pages + 1) + ", byte " +
                                std::to_string(job_->reached()) + "; it may be cut off");
    }
    if (comments.promisedPages() > result.pages) {
      result.warnings.push_back("the job ends after " + std::to_string(result.pages) + " of " +
                                std::to_string(comments.promisedPages()) + " pages; it may be cut off");
    }
    if (const std::string unkept = graphics_.unkept().summary(); !unkept.empty()) {
      result.warnings.push_back("not kept in the PDF: " + unkept);
    }
  }

  void describeDocument() {
    const CommentScanner& comments = job_->comments();
    // What pdfmark has said counts more.
    if (!comments.title().empty()) document_.setInformationUnlessSet("Title", comments.title());
    if (!comments.creator().empty()) document_.setInformationUnlessSet("Creator", comments.creator());
    document_.setInformationUnlessSet("Producer", "Quillpress");
    std::optional<std::string> date = pdfDateOf(comments.creationDate());
    if (!date) date = pdfDateOfEnvironment();
    if (date) document_.setInformationUnlessSet("CreationDate", *date);
  }

  const DocumentOptions& options_;
  const std::atomic<bool>& isCancelled_;
  Machine machine_;
  Interpreter& interpreter_ = machine_.interpreter();
  PdfDocument& document_ = machine_.document();
  Graphics& graphics_ = machine_.graphics();
  PageDevice& device_ = machine_.device();
  std::shared_ptr<JobSource> job_;
  DocumentResult result_;
  bool hasLooked_ = false;
};

}  // namespace

DocumentResult convertDocument(const SourcePointer& job, Output& output, const DocumentOptions& options,
                               const std::atomic<bool>& isCancelled) {
  return Conversion(job, output, options, isCancelled).run();
}

}  // namespace quillpress::level3
