#include "cli/base/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>

#include "cli/base/ByteCount.h"
#include "cli/base/HelpTexts.h"
#include "cli/base/Media.h"
#include "cli/base/Messages.h"
#include "cli/base/NearestWord.h"
#include "cli/system/Paths.h"

namespace quillpress::cli {

namespace {

constexpr const char* kDescription = "Converts a PostScript job to PDF.";

std::string footer() {
  std::string text = "Examples:\n";
  for (const ExampleHelp& example : exampleHelp()) {
    text.append("  ").append(example.command).append("\n      ").append(example.meaning).append("\n");
  }
  text += "\nExit codes:\n";
  for (const ExitCodeHelp& help : exitCodeHelp()) {
    text.append("  ").append(std::to_string(help.code)).append(" ").append(help.meaning).append("\n");
  }
  return text.append(kSeveralCodes).append("\nByte offsets in messages count from 0 at the start of JOB.");
}

// What options make of their texts. A mistake is told with the text as the user wrote it.

[[noreturn]] void refuse(const std::string& complaint, const std::string& text) {
  throw CLI::ValidationError(complaint + " \"" + text + "\"");
}

// The whole text as a number.
template <typename Number>
std::optional<Number> numberOf(const std::string& text) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::string asText(const std::string& text) {
  return text;
}

std::string asOutput(const std::string& text) {
  // A script's variable without a value, which would otherwise mean a place that nobody has chosen.
  if (text.empty()) throw CLI::ValidationError("an empty name stands for no file");
  return text;
}

PageSelection asPages(const std::string& text) {
  const std::optional<PageSelection> pages = PageSelection::parse(text);
  if (!pages) refuse("--pages: not a list of pages:", text);
  return *pages;
}

int asRotation(const std::string& text) {
  constexpr int kRightAngle = 90;
  constexpr int kFullTurn = 360;
  const std::optional<int> degrees = numberOf<int>(text);
  if (!degrees || *degrees % kRightAngle != 0 || *degrees < -kFullTurn || *degrees > kFullTurn) {
    refuse("--rotate: not a multiple of 90 degrees up to 360:", text);
  }
  return (*degrees + kFullTurn) % kFullTurn;
}

std::size_t asWorkers(const std::string& text) {
  constexpr std::size_t kMost = 1024;
  const std::optional<std::size_t> count = numberOf<std::size_t>(text);
  if (!count || *count < 1 || *count > kMost) refuse("--jobs: not a number of processes up to 1024:", text);
  return *count;
}

Shard asShard(const std::string& text) {
  const std::size_t slash = std::min(text.find('/'), text.size());
  const auto index = numberOf<std::size_t>(text.substr(0, slash));
  const auto count = numberOf<std::size_t>(text.substr(std::min(slash + 1, text.size())));
  if (!index || !count || *index < 1 || *index > *count) refuse("--shard: not a part like 1/4:", text);
  return {*index, *count};
}

std::string asPdfVersion(const std::string& text) {
  if (text == "1.4" || text == "1.5" || text == "1.6" || text == "1.7" || text == "2.0") return text;
  refuse("--pdf-version: not a version from 1.4 to 1.7, or 2.0:", text);
}

int asQuality(const std::string& text) {
  constexpr int kBest = 100;
  const std::optional<int> quality = numberOf<int>(text);
  if (!quality || *quality < 1 || *quality > kBest)
    refuse("--image-quality: not a number from 1 to 100:", text);
  return *quality;
}

double asResolution(const std::string& text) {
  constexpr double kFinest = 1e5;
  const std::optional<double> resolution = numberOf<double>(text);
  if (!resolution || !(*resolution >= 1 && *resolution <= kFinest))
    refuse("--downsample: not a number of pixels to the inch:", text);
  return *resolution;
}

ArchivePart asArchivePart(const std::string& text) {
  if (text == "1b") return ArchivePart::k1b;
  if (text == "2b") return ArchivePart::k2b;
  if (text == "3b") return ArchivePart::k3b;
  refuse("--pdfa: not a part of PDF/A, 1b, 2b or 3b:", text);
}

Permissions asPermissions(const std::string& text) {
  const std::optional<Permissions> permissions = parsePermissions(text);
  if (!permissions) refuse("--permissions: not a list of permissions:", text);
  return *permissions;
}

Box asMedia(const std::string& text) {
  const std::optional<Box> media = parseMedia(text);
  if (!media) refuse("--media: unknown page size", text);
  return *media;
}

std::size_t asByteCount(const std::string& text) {
  const std::optional<std::size_t> size = parseByteCount(text);
  if (!size) refuse("--chunk: not a number of bytes:", text);
  return *size;
}

double asSeconds(const std::string& text) {
  // 30 years; clocks count further than that.
  constexpr double kLongest = 1e9;
  const std::optional<double> seconds = numberOf<double>(text);
  if (!seconds || !(*seconds > 0 && *seconds <= kLongest))
    refuse("--timeout: not a number of seconds:", text);
  return *seconds;
}

std::size_t asMegabytes(const std::string& text) {
  constexpr std::size_t kMegabyte = 1024UL * 1024;
  const std::optional<std::size_t> count = numberOf<std::size_t>(text);
  if (!count || *count < 1 || *count > kMegabyte) refuse("--max-memory: not a number of megabytes:", text);
  return *count * kMegabyte;
}

Dialect asDialect(const std::string& text) {
  if (text == "driver") return Dialect::kDriver;
  if (text != "full") refuse("--dialect: neither driver nor full:", text);
  return Dialect::kFull;
}

std::string asFolder(const std::string& text) {
  if (!std::filesystem::is_directory(pathOf(text))) refuse("--allow-read: not a folder:", text);
  return text;
}

template <typename Field, typename Read>
CLI::Option* addOption(CLI::App& app, const char* name, Field& field, Read read, const std::string& help) {
  const auto set = [&field, read](const std::string& text) { field = read(text); };
  return app.add_option_function<std::string>(name, set, help);
}

// Each text behind the option is one more element.
template <typename Element, typename Read>
CLI::Option* addOption(CLI::App& app, const char* name, std::vector<Element>& field, Read read,
                       const std::string& help) {
  const auto set = [&field, read](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) field.push_back(read(text));
  };
  return app.add_option_function<std::vector<std::string>>(name, set, help)->allow_extra_args(false);
}

void define(CLI::App& app, Options& options) {
  app.footer(footer());
  app.set_version_flag("--version", "quillpress " QUILLPRESS_VERSION, "Show the version and exit");
  app.set_help_flag("-h,--help", "Show this help and exit");
  app.add_option("JOB", options.jobs, "The PostScript jobs; - is standard input")->type_name("");
  // For those who build and install: not for the help.
  app.add_option("--generate", options.generated)->group("");
#define FLAG(field, name, help) app.add_flag(name, options.field, help);
#define OPTION(type, field, initial, name, values, read, help) \
  addOption(app, name, options.field, read, help)->type_name(values);
#include "cli/base/Options.def"
#undef FLAG
#undef OPTION
}

// Some options mean something to the driver's dialect alone.
void chooseDialect(const CLI::App& app, Options& options) {
  const bool impliesDriver =
      options.content || options.objects || options.keepGoing || app.count("--chunk") > 0;
  if (!impliesDriver) return;
  if (app.count("--dialect") > 0 && options.dialect == Dialect::kFull) {
    throw CLI::ValidationError("--content, --objects, --keep-going and --chunk want --dialect driver");
  }
  options.dialect = Dialect::kDriver;
}

void checkEncryption(const CLI::App& app, Options& options) {
  const bool hasPassword = !options.userPassword.empty() || !options.ownerPassword.empty();
  const bool isRestricted = app.count("--permissions") > 0;
  // Whoever names a password or a permission never wants a PDF that is open to all.
  if (app.count("--user-password") + app.count("--owner-password") > 0 || isRestricted)
    options.encrypt = true;
  if (!options.encrypt) return;
  if (!hasPassword) throw CLI::ValidationError("--encrypt wants --user-password or --owner-password");
  if (isRestricted && options.ownerPassword.empty()) {
    throw CLI::ValidationError("--permissions wants --owner-password, or everybody were the owner");
  }
  if (!options.pdfVersion.empty() && options.pdfVersion < "1.7") {
    throw CLI::ValidationError("--encrypt wants --pdf-version 1.7 or 2.0");
  }
}

// An archive says itself what it is, and nobody may be kept out.
void checkArchive(const Options& options) {
  if (options.archive == ArchivePart::kNone) {
    if (!options.outputIntent.empty()) throw CLI::ValidationError("--output-intent wants --pdfa");
    return;
  }
  if (options.encrypt) throw CLI::ValidationError("--pdfa and --encrypt: an archive is never encrypted");
  if (!options.pdfVersion.empty())
    throw CLI::ValidationError("--pdfa and --pdf-version: the part of PDF/A has its version");
  if (options.dialect == Dialect::kDriver) throw CLI::ValidationError("--pdfa wants --dialect full");
}

void checkImages(const Options& options) {
  const bool isAsked = options.imageQuality != 0 || options.imageResolution != 0;
  if (isAsked && options.dialect == Dialect::kDriver)
    throw CLI::ValidationError("--image-quality and --downsample want --dialect full");
}

// Some shells leave patterns of names to the programs.
std::vector<std::string> expandedJobs(const std::vector<std::string>& arguments) {
  std::vector<std::string> jobs;
  for (const std::string& argument : arguments) {
    for (std::string& job : expanded(argument)) jobs.push_back(std::move(job));
  }
  return jobs;
}

void checkJobs(const Options& options) {
  if (options.jobs.empty() && options.batch.empty() && options.generated.empty())
    throw CLI::ValidationError("JOB is required");
}

void sayUnexpected(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* const option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  for (const std::string& argument : app.remaining()) {
    const auto nearest = nearestWord(argument.substr(0, argument.find('=')), names);
    say("unknown option " + argument + (nearest ? "; did you mean " + *nearest + "?" : ""));
  }
}

}  // namespace

std::optional<Options> parseOptions(int argc, const char* const* argv, ExitCode& exit) {
  CLI::App app(kDescription, "quillpress");
  Options options;
  define(app, options);
  try {
    // Some systems would take paths from the root for options.
    app.allow_windows_style_options(false);
    app.parse(argc, argv);
    options.jobs = expandedJobs(options.jobs);
    checkJobs(options);
    chooseDialect(app, options);
    checkEncryption(app, options);
    checkArchive(options);
    checkImages(options);
    return options;
    // Help and version come as exceptions too.
  } catch (const CLI::Success& request) {
    app.exit(request);
    exit = ExitCode::kDone;
  } catch (const CLI::Error& error) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError)) {
      sayUnexpected(app);
    } else {
      say(error.what());
    }
    // The whole help would push the mistake out of sight.
    say("try --help");
    exit = ExitCode::kUsage;
  }
  return std::nullopt;
}

}  // namespace quillpress::cli
