#include "cli/base/Options.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "cli/base/ByteCount.h"
#include "cli/base/Media.h"
#include "cli/base/Messages.h"

namespace quillpress::cli {

namespace {

constexpr const char* kDescription = "Converts a PostScript job to PDF.";

constexpr const char* kFooter =
    "Exit codes: 0 done, 1 error in the job (nothing is written), 2 usage, 3 input, 4 output,\n"
    "5 done with warnings: the job is cut off, or something of it is not kept,\n"
    "6 error in the job (the complete pages before it are written).\n"
    "With --dialect driver, 1 stands for both kinds of error.\n"
    "Byte offsets in messages count from 0 at the start of JOB.";

// The texts of options whose values need a look of our own.
struct RawOptions {
  std::string media;
  std::string chunk;
  std::string dialect;
  std::size_t maxMemory = 0;
};

void define(CLI::App& app, Options& options, RawOptions& raw) {
  app.footer(kFooter);
  app.set_version_flag("--version", "quillpress " QUILLPRESS_VERSION, "Show the version and exit");
  app.set_help_flag("-h,--help", "Show this help and exit");
  app.add_option("JOB", options.job, "The PostScript job; - is standard input")->required()->type_name("");
  app.add_option("-o,--output", options.output,
                 "Where the PDF goes; - is standard output (default:\n"
                 "beside JOB, ending in .pdf; standard output when\n"
                 "JOB is standard input)")
      ->type_name("FILE");
  app.add_option("--media", raw.media,
                 "Page size of jobs that ask for none; with --dialect\ndriver of all jobs: " + mediaNames() +
                     ",\nor WIDTHxHEIGHT in points or with a unit (pt, mm,\ncm, in), as in 210x297mm")
      ->type_name("SIZE");
  app.add_option(
         "--chunk", raw.chunk,
         "Driver: bytes handed to the converter at a time, with\nK or M behind the number (default: 64K)")
      ->type_name("BYTES");
  app.add_flag("--keep-going", options.keepGoing, "Driver: after an error go on with the next page");
  app.add_flag("--content", options.content, "Driver: write the page content text instead of a PDF");
  app.add_flag("--objects", options.objects, "Driver: list images and patterns on standard error");
  app.add_option("--dialect", raw.dialect,
                 "full: the whole language, LanguageLevel 3 (default);\ndriver: the dialect of the six "
                 "converter functions,\n"
                 "which the options marked so imply")
      ->type_name("DIALECT")
      ->check(CLI::IsMember({"driver", "full"}));
  app.add_flag("--run", options.run,
               "Interpret JOB as LanguageLevel 3; what it prints\ngoes to standard output");
  app.add_option("--timeout", options.timeout, "End the job after so many seconds")
      ->type_name("SECONDS")
      ->check(CLI::PositiveNumber);
  app.add_option("--max-memory", raw.maxMemory, "Megabytes that the job's values may take (default: 1024)")
      ->type_name("MB")
      ->check(CLI::Range(1, 1024 * 1024));
  app.add_option("--allow-read", options.readableFolders,
                 "A folder whose files the job may read (default: none);\ncan be given more than once")
      ->type_name("DIR")
      ->check(CLI::ExistingDirectory)
      ->expected(1);
  app.add_flag("!--no-eps-crop", options.cropsEncapsulated, "Leave EPS jobs on their page");
  app.add_flag("--messages", options.messages, "Show what the job prints on standard error");
}

std::filesystem::path withoutJobEnding(const std::filesystem::path& job) {
  const std::filesystem::path ending = job.extension();
  // Endings in mixed case are left alone: nobody writes them, and a name is not changed without need.
  const bool isJobEnding = ending == ".ps" || ending == ".eps" || ending == ".prn" || ending == ".PS" ||
                           ending == ".EPS" || ending == ".PRN";
  return isJobEnding ? job.parent_path() / job.stem() : job;
}

std::string defaultOutput(const Options& options) {
  const bool toStandardOutput = options.job == "-" || options.content;
  if (!toStandardOutput) return withoutJobEnding(options.job).string() + ".pdf";
  // Text may go to a terminal, as the user asked to see it.
  if (!options.content && isatty(STDOUT_FILENO) == 1) {
    throw CLI::ValidationError("a PDF is nothing for a terminal: say with -o where it goes");
  }
  return "-";
}

// Some options mean something to the driver's dialect alone.
void chooseDialect(Options& options, const RawOptions& raw) {
  const bool impliesDriver = options.content || options.objects || options.keepGoing || !raw.chunk.empty();
  if (impliesDriver && raw.dialect == "full") {
    throw CLI::ValidationError("--content, --objects, --keep-going and --chunk want --dialect driver");
  }
  if (impliesDriver || raw.dialect == "driver") options.dialect = Dialect::kDriver;
}

void finish(Options& options, const RawOptions& raw) {
  if (!raw.media.empty()) {
    options.media = parseMedia(raw.media);
    if (!options.media) throw CLI::ValidationError("--media: unknown page size \"" + raw.media + "\"");
  }
  if (!raw.chunk.empty()) {
    const auto size = parseByteCount(raw.chunk);
    if (!size) throw CLI::ValidationError("--chunk: not a number of bytes: \"" + raw.chunk + "\"");
    options.chunkSize = *size;
  }
  chooseDialect(options, raw);
  constexpr std::size_t kMegabyte = 1024UL * 1024;
  if (raw.maxMemory != 0) options.maxMemory = raw.maxMemory * kMegabyte;
  if (options.output.empty() && !options.run) options.output = defaultOutput(options);
}

}  // namespace

std::optional<Options> parseOptions(int argc, const char* const* argv, ExitCode& exit) {
  CLI::App app(kDescription, "quillpress");
  Options options;
  RawOptions raw;
  define(app, options, raw);
  try {
    app.parse(argc, argv);
    finish(options, raw);
    return options;
    // Help and version come as exceptions too.
  } catch (const CLI::Success& request) {
    app.exit(request);
    exit = ExitCode::kDone;
  } catch (const CLI::Error& error) {
    say(error.what());
    // The whole help would push the mistake out of sight.
    say("try --help");
    exit = ExitCode::kUsage;
  }
  return std::nullopt;
}

}  // namespace quillpress::cli
