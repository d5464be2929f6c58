#include "cli/driver/DriverConversion.h"

#include <functional>
#include <optional>

#include "cli/base/Messages.h"
#include "cli/base/Names.h"
#include "cli/conversion/Conversion.h"
#include "cli/conversion/MessageSwitch.h"
#include "cli/conversion/TextPages.h"
#include "cli/job/Envelope.h"
#include "cli/pdf/ObjectList.h"
#include "cli/pdf/PdfPages.h"
#include "cli/pdf/PdfWriter.h"

namespace quillpress::cli {

namespace {

// What came of a job, besides its pages.
struct Outcome {
  std::string name;  // of the job in messages
  bool hasFailed;
  bool isCutOff;
  JobComments comments;
};

PageCounts pageCounts(const Document& document) {
  PageCounts counts;
  for (const DocumentPage& page : document.pages) {
    for (const unsigned number : page.objects) ++counts[number];
  }
  return counts;
}

// Warns when the job has ended before it was complete. A job with an error has been judged already.
bool warnIfCutOff(const std::string& name, const Conversion& conversion, const DscScanner& scanner,
                  TaskResult& result) {
  if (conversion.hasFailed()) return false;
  std::string text;
  if (conversion.endsInside()) {
    text = "the job ends inside a string, a procedure or an image; it may be cut off";
  } else if (scanner.isInData()) {
    text = "the job ends inside a section of data; it may be cut off";
  } else if (conversion.comments().lacksPages()) {
    text = "the job ends before the last of its pages; it may be cut off";
  } else {
    return false;
  }
  warn(name, text);
  result.warnings.push_back(text);
  return true;
}

// Runs the job into `pages` and calls `atEnd` with its converter, which is gone afterwards, so that its
// memory can be used again.
Outcome convertJob(const Options& options, JobFile& job, const Output& output, PageOutput& pages,
                   TaskResult& result, const std::function<void(const Converter&)>& atEnd) {
  std::optional<MessageSwitch> messages;
  if (options.messages) messages.emplace(MessageSwitch::Target::kStandardError);
  JobRunner runner;
  std::optional<Spool> setUp;
  // Only there can it be needed again.
  if (options.keepGoing) runner.recordSetUp(setUp.emplace(output.folder()));
  Conversion conversion({options.job, options.chunkSize, options.keepGoing}, runner, pages);
  DscScanner scanner(conversion);
  Envelope envelope(scanner);
  job.pumpInto(envelope);
  const std::string name = jobName(options.job);
  if (envelope.moreJobsFollow()) say(name + ": only the first job is converted; another one follows it");
  const bool isCutOff = warnIfCutOff(name, conversion, scanner, result);
  // The list belongs to the converter, and goes with it.
  if (options.objects) atEnd(runner.converter());
  return {name, conversion.hasFailed(), isCutOff, conversion.comments()};
}

// Puts the output in its place when it holds any page.
void deliver(const Outcome& outcome, Output& output, const std::string& target, TaskResult& result) {
  if (result.pages == 0) {
    result.error = "no page is complete, so nothing is written";
    say(outcome.name + ": " + result.error);
    result.code = ExitCode::kConversion;
    return;
  }
  output.commit();
  if (outcome.hasFailed) {
    say(target + ": " + counted(result.pages, "complete page") + " written");
    result.error = "an error in the job";
    result.code = ExitCode::kConversion;
  } else if (outcome.isCutOff) {
    result.code = ExitCode::kCutOff;
  }
}

void convertToPdf(const Options& options, JobFile& job, Output& output, Spool& spool, TaskResult& result) {
  PdfPages pages(spool);
  Document& document = pages.document();
  const Outcome outcome = convertJob(options, job, output, pages, result, [&](const Converter& converter) {
    const PageCounts counts = pageCounts(document);
    listObjects(converter.objects(), &counts, stderr);
  });
  pages.finish();
  document.media = options.media;
  document.defaultBox = outcome.comments.defaultBox();
  document.title = outcome.comments.title();
  document.creator = outcome.comments.creator();
  // Otherwise the output is not even opened.
  if (!document.pages.empty()) writePdf(document, pages.objects(), spool, output.file());
  result.pages = document.pages.size();
  deliver(outcome, output, outputName(options.output), result);
}

void convertToText(const Options& options, JobFile& job, Output& output, Spool& spool, TaskResult& result) {
  TextPages pages(spool, output);
  const Outcome outcome = convertJob(options, job, output, pages, result, [](const Converter& converter) {
    listObjects(converter.objects(), nullptr, stderr);
  });
  result.pages = pages.pageCount();
  deliver(outcome, output, outputName(options.output), result);
}

}  // namespace

void convertDriverJob(const Options& options, JobFile& job, Output& output, TaskResult& result) {
  Spool spool(output.folder());
  if (options.content) {
    convertToText(options, job, output, spool, result);
  } else {
    convertToPdf(options, job, output, spool, result);
  }
}

}  // namespace quillpress::cli
