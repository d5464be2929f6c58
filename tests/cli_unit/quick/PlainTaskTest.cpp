#include <gtest/gtest.h>

#include "cli/quick/PlainTask.h"

namespace quillpress::cli {
namespace {

Options withJob() {
  Options options;
  options.jobs = {"a.ps"};
  return options;
}

TEST(PlainTaskTest, OneJobAndWhereItGoesIsPlain) {
  const auto task = plainTask(withJob());
  ASSERT_TRUE(task);
  EXPECT_EQ(task->job, "a.ps");
  EXPECT_EQ(task->output, "a.pdf");
}

TEST(PlainTaskTest, WhatTheLanguageItselfTakesIntoAccountIsPlain) {
  Options options = withJob();
  options.output = "b.pdf";
  options.imageResolution = 150;
  options.timeout = 10;
  options.quiet = true;
  options.readableFolders = {"/tmp"};
  EXPECT_TRUE(plainTask(options));
}

TEST(PlainTaskTest, SeveralJobsAreNot) {
  Options options = withJob();
  options.jobs.emplace_back("b.ps");
  EXPECT_FALSE(plainTask(options));
}

TEST(PlainTaskTest, MistakesAreForTheWholeProgram) {
  Options options = withJob();
  options.output = "b.pdf";
  options.folder = "c";
  EXPECT_FALSE(plainTask(options));
  EXPECT_FALSE(plainTask(Options()));
}

TEST(PlainTaskTest, ReworkingThePdfIsNot) {
  Options options = withJob();
  options.linearize = true;
  EXPECT_FALSE(plainTask(options));
  options = withJob();
  options.title = "";
  EXPECT_FALSE(plainTask(options));
  options = withJob();
  options.output = "page-%d.pdf";
  EXPECT_FALSE(plainTask(options));
}

TEST(PlainTaskTest, TheDriversDialectIsNot) {
  Options options = withJob();
  options.dialect = Dialect::kDriver;
  EXPECT_FALSE(plainTask(options));
  options = withJob();
  options.content = true;
  EXPECT_FALSE(plainTask(options));
}

TEST(PlainTaskTest, ProgramsBatchesAndManualsAreNot) {
  Options options = withJob();
  options.run = true;
  EXPECT_FALSE(plainTask(options));
  options = withJob();
  options.workers = 2;
  EXPECT_FALSE(plainTask(options));
  options = withJob();
  options.generated = "man";
  EXPECT_FALSE(plainTask(options));
}

}  // namespace
}  // namespace quillpress::cli
