#include "cli/Program.h"

#include <functional>
#include <new>
#include <optional>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/base/Names.h"
#include "cli/conversion/Conversion.h"
#include "cli/conversion/MessageSwitch.h"
#include "cli/conversion/TextPages.h"
#include "cli/full/FullConversion.h"
#include "cli/job/Envelope.h"
#include "cli/job/JobFile.h"
#include "cli/pdf/ObjectList.h"
#include "cli/pdf/PdfPages.h"
#include "cli/pdf/PdfWriter.h"
#include "cli/run/RunProgram.h"
#include "cli/spool/AtomicOutput.h"

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

void sayWhatIsMissing(const std::string& name, const Envelope& envelope, const Conversion& conversion) {
  if (envelope.moreJobsFollow()) say(name + ": only the first job is converted; another one follows it");
  const std::uint64_t texts = conversion.textsShown();
  if (texts > 0) say(name + ": text is not drawn; the job shows text " + counted(texts, "time"));
}

// Warns when the job has ended before it was complete. A job with an error has been judged already.
bool warnIfCutOff(const std::string& name, const Conversion& conversion, const DscScanner& scanner) {
  if (conversion.hasFailed()) return false;
  if (conversion.endsInside()) {
    say(name + ": warning: the job ends inside a string, a procedure or an image; it may be cut off");
  } else if (scanner.isInData()) {
    say(name + ": warning: the job ends inside a section of data; it may be cut off");
  } else if (conversion.comments().lacksPages()) {
    say(name + ": warning: the job ends before the last of its pages; it may be cut off");
  } else {
    return false;
  }
  return true;
}

// Runs the job into `pages` and calls `atEnd` with its converter, which is gone afterwards, so that its
// memory can be used again.
Outcome convertJob(const Options& options, JobFile& job, const AtomicOutput& output, PageOutput& pages,
                   const std::function<void(const Converter&)>& atEnd) {
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
  sayWhatIsMissing(name, envelope, conversion);
  const bool isCutOff = warnIfCutOff(name, conversion, scanner);
  // The list belongs to the converter, and goes with it.
  if (options.objects) atEnd(runner.converter());
  return {name, conversion.hasFailed(), isCutOff, conversion.comments()};
}

// Puts the output in its place when it holds any page.
ExitCode deliver(const Outcome& outcome, std::size_t pages, AtomicOutput& output, const std::string& target) {
  if (pages == 0) {
    say(outcome.name + ": no page is complete, so nothing is written");
    return ExitCode::kConversion;
  }
  output.commit();
  if (!outcome.hasFailed) return outcome.isCutOff ? ExitCode::kCutOff : ExitCode::kDone;
  say(target + ": " + counted(pages, "complete page") + " written");
  return ExitCode::kConversion;
}

ExitCode convertToPdf(const Options& options, JobFile& job, AtomicOutput& output, Spool& spool) {
  PdfPages pages(spool);
  Document& document = pages.document();
  const Outcome outcome = convertJob(options, job, output, pages, [&](const Converter& converter) {
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
  return deliver(outcome, document.pages.size(), output, outputName(options.output));
}

ExitCode convertToText(const Options& options, JobFile& job, AtomicOutput& output, Spool& spool) {
  TextPages pages(spool, output);
  const Outcome outcome = convertJob(options, job, output, pages, [](const Converter& converter) {
    listObjects(converter.objects(), nullptr, stderr);
  });
  return deliver(outcome, pages.pageCount(), output, outputName(options.output));
}

ExitCode convert(const Options& options) {
  JobFile job(options.job);
  // Before anything is opened for writing, which might already empty the job.
  if (job.isSameAs(options.output)) throw UsageError("the output would replace the job itself");
  AtomicOutput output(options.output);
  if (options.dialect == Dialect::kFull) return convertFully(options, output);
  Spool spool(output.folder());
  return options.content ? convertToText(options, job, output, spool)
                         : convertToPdf(options, job, output, spool);
}

}  // namespace

ExitCode runProgram(const Options& options) {
  try {
    return options.run ? interpretProgram(options) : convert(options);
  } catch (const UsageError& error) {
    say(error.what());
    return ExitCode::kUsage;
  } catch (const InputError& error) {
    say(jobName(options.job) + " " + error.what());
    return ExitCode::kInput;
  } catch (const OutputError& error) {
    say(outputName(options.output) + " " + error.what());
    return ExitCode::kOutput;
  } catch (const std::bad_alloc&) {
    say(jobName(options.job) + ": out of memory");
    return ExitCode::kConversion;
  }
}

}  // namespace quillpress::cli
