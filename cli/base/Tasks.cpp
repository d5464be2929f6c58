#include "cli/base/Tasks.h"

#include <filesystem>
#include <unordered_map>

#include "cli/base/Errors.h"
#include "cli/base/Manifest.h"
#include "cli/base/PagePattern.h"
#include "cli/system/Paths.h"
#include "cli/system/StandardStreams.h"

namespace quillpress::cli {

namespace {

namespace fs = std::filesystem;

fs::path withoutJobEnding(const fs::path& job) {
  const fs::path ending = job.extension();
  // Endings in mixed case are left alone: nobody writes them, and a name is not changed without need.
  const bool isJobEnding = ending == ".ps" || ending == ".eps" || ending == ".prn" || ending == ".PS" ||
                           ending == ".EPS" || ending == ".PRN";
  return isJobEnding ? job.parent_path() / job.stem() : job;
}

std::string toStandardOutput(const Options& options) {
  // Text may go to a terminal, as the user asked to see it.
  if (!options.content && !options.run && isTerminal(StandardStream::kOutput)) {
    throw UsageError("a PDF is nothing for a terminal: say with -o where it goes");
  }
  return "-";
}

std::string outputOf(const Options& options, const std::string& job) {
  if (!options.output.empty()) return options.output;
  if (options.run) return {};
  if (job == "-" && !options.folder.empty()) throw UsageError("standard input has no name for --directory");
  if (job == "-" || options.content) return toStandardOutput(options);
  std::string beside = utf8Of(withoutJobEnding(pathOf(job))) + ".pdf";
  if (options.folder.empty()) return beside;
  return utf8Of(pathOf(options.folder) / pathOf(beside).filename());
}

void checkPlaces(const Options& options) {
  if (!options.output.empty() && !options.folder.empty()) {
    throw UsageError("--output and --directory do not go together");
  }
  if (PagePattern::parse(options.output) && options.content) {
    throw UsageError("--content knows no file a page");
  }
  const bool isBatch = !options.batch.empty();
  if (options.jobs.size() < 2 && !isBatch) return;
  if (!options.output.empty()) throw UsageError("--output is for one job; several want --directory");
  if (options.run) throw UsageError("--run is for one program");
  if (options.content) throw UsageError("--content is for one job");
  for (const std::string& job : options.jobs) {
    if (job == "-") throw UsageError("standard input is for one job alone");
  }
}

// Tells where paths lead, so that two names of one place are seen to be one. What is asked of the file system
// is remembered: many files share few folders.
class Places {
 public:
  std::string of(const std::string& path) {
    const fs::path asked = pathOf(path);
    const fs::path place = folder(asked.parent_path()) / asked.filename();
    std::error_code error;
    if (!fs::is_symlink(place, error)) return comparableName(place);
    const fs::path target = fs::weakly_canonical(place, error);
    return comparableName(error ? place : target);
  }

 private:
  const fs::path& folder(const fs::path& path) {
    const auto [entry, isNew] = folders_.try_emplace(comparableName(path));
    if (isNew) {
      std::error_code error;
      entry->second = fs::weakly_canonical(path.empty() ? fs::path(".") : path, error);
      if (error) entry->second = fs::absolute(path, error).lexically_normal();
    }
    return entry->second;
  }

  std::unordered_map<std::string, fs::path> folders_;
};

void checkClashes(const std::vector<Task>& tasks) {
  Places places;
  std::unordered_map<std::string, std::string> jobs;
  for (const Task& task : tasks) jobs.emplace(places.of(task.job), task.job);
  std::unordered_map<std::string, std::string> writers;
  for (const Task& task : tasks) {
    const std::string place = places.of(task.output);
    const auto [writer, isNew] = writers.emplace(place, task.job);
    if (!isNew) {
      throw UsageError(task.output + " would be written by " + writer->second + " and by " + task.job);
    }
    if (jobs.contains(place)) {
      throw UsageError(task.output + ", the output of " + task.job + ", would replace a job");
    }
  }
}

}  // namespace

std::vector<Task> tasksOf(const Options& options) {
  checkPlaces(options);
  std::vector<Task> tasks;
  for (const std::string& job : options.jobs) tasks.push_back({job, outputOf(options, job)});
  if (!options.batch.empty()) {
    for (const ManifestLine& line : readManifest(options.batch)) {
      tasks.push_back({line.job, line.output.empty() ? outputOf(options, line.job) : line.output});
    }
  }
  if (tasks.size() > 1) checkClashes(tasks);
  return tasks;
}

Options optionsFor(const Options& options, const Task& task) {
  Options one = options;
  one.job = task.job;
  one.output = task.output;
  return one;
}

}  // namespace quillpress::cli
