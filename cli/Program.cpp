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
#include "cli/job/Envelope.h"
#include "cli/job/JobFile.h"
#include "cli/pdf/ObjectList.h"
#include "cli/pdf/PdfPages.h"
#include "cli/pdf/PdfWriter.h"
#include "cli/spool/AtomicOutput.h"

namespace quillpress::cli {

namespace {

/** What came of a job, besides its pages. */
struct Outcome {
  bool hasFailed;
  JobComments comments;
};

PageCounts pageCounts(const Document& document) {
  PageCounts counts;
  for (const DocumentPage& page : document.pages) {
    for (const unsigned number : page.objects) ++counts[number];
  }
  return counts;
}

void sayWhatIsMissing(const std::string& name, const Envelope& envelope, JobRunner& runner) {
  if (envelope.moreJobsFollow()) say(name + ": only the first job is converted; another one follows it");
  const std::uint64_t texts = runner.textsShown();
  if (texts > 0) say(name + ": text is not drawn; the job shows text " + counted(texts, "time"));
}

/**
 * Runs the job into `pages` and calls `atEnd` with its converter, which is gone afterwards, so that its
 * memory can be used again.
 */
Outcome convertJob(const Options& options, JobFile& job, const AtomicOutput& output, PageOutput& pages,
                   const std::function<void(const Converter&)>& atEnd) {
  std::optional<MessageSwitch> messages;
  if (options.messages) messages.emplace(MessageSwitch::Target::StandardError);
  JobRunner runner;
  std::optional<Spool> setUp;
  if (options.keepGoing) runner.recordSetUp(setUp.emplace(output.folder()));
  Conversion conversion(options, runner, pages);
  DscScanner scanner(conversion);
  Envelope envelope(scanner);
  job.pumpInto(envelope);
  sayWhatIsMissing(jobName(options.job), envelope, runner);
  if (options.objects) atEnd(runner.converter());
  return {conversion.hasFailed(), conversion.comments()};
}

/** Puts the output in its place when it holds any page. */
ExitCode deliver(const Options& options, AtomicOutput& output, bool hasFailed, std::size_t pages) {
  if (pages == 0) {
    say(jobName(options.job) + ": no page is complete, so nothing is written");
    return ExitCode::Conversion;
  }
  output.commit();
  if (!hasFailed) return ExitCode::Done;
  say(outputName(options.output) + ": " + counted(pages, "complete page") + " written");
  return ExitCode::Conversion;
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
  if (!document.pages.empty()) writePdf(document, pages.objects(), spool, output.file());
  return deliver(options, output, outcome.hasFailed, document.pages.size());
}

ExitCode convertToText(const Options& options, JobFile& job, AtomicOutput& output, Spool& spool) {
  TextPages pages(spool, output);
  const Outcome outcome = convertJob(options, job, output, pages, [](const Converter& converter) {
    listObjects(converter.objects(), nullptr, stderr);
  });
  return deliver(options, output, outcome.hasFailed, pages.pageCount());
}

ExitCode convert(const Options& options) {
  JobFile job(options.job);
  if (job.isSameAs(options.output)) throw UsageError("the output would replace the job itself");
  AtomicOutput output(options.output);
  Spool spool(output.folder());
  return options.content ? convertToText(options, job, output, spool)
                         : convertToPdf(options, job, output, spool);
}

}  // namespace

ExitCode runProgram(const Options& options) {
  try {
    return convert(options);
  } catch (const UsageError& error) {
    say(error.what());
    return ExitCode::Usage;
  } catch (const InputError& error) {
    say(jobName(options.job) + " " + error.what());
    return ExitCode::Input;
  } catch (const OutputError& error) {
    say(outputName(options.output) + " " + error.what());
    return ExitCode::Output;
  } catch (const std::bad_alloc&) {
    say(jobName(options.job) + ": out of memory");
    return ExitCode::Conversion;
  }
}

}  // namespace quillpress::cli
