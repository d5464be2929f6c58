#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "cli/system/Paths.h"

namespace quillpress::cli {

// Gives each test a folder of its own.
class FolderTest : public testing::Test {
 protected:
  FolderTest() {
    // Tests run side by side, so a name may be taken.
    do {
      const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
      folder_ = testing::TempDir() + "quillpress-unit-" + std::to_string(now);
    } while (!std::filesystem::create_directory(pathOf(folder_)));
  }
  ~FolderTest() override {
    std::error_code error;
    std::filesystem::remove_all(pathOf(folder_), error);
    EXPECT_FALSE(error) << error.message();
  }

  [[nodiscard]] const std::string& folder() const { return folder_; }
  [[nodiscard]] std::string path(const std::string& name) const { return folder_ + "/" + name; }

  std::string write(const std::string& name, const std::string& text) const {
    std::ofstream(pathOf(path(name)), std::ios::binary) << text;
    return path(name);
  }

  [[nodiscard]] std::string read(const std::string& name) const {
    std::ifstream file(pathOf(path(name)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(pathOf(folder_))) {
      names.push_back(utf8Of(entry.path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::string folder_;
};

}  // namespace quillpress::cli
