#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace quillpress::cli {

// Gives each test a folder of its own.
class FolderTest : public testing::Test {
 protected:
  FolderTest() {
    std::string pattern = testing::TempDir() + "quillpress-unit-XXXXXX";
    folder_ = mkdtemp(pattern.data());
  }
  ~FolderTest() override { std::filesystem::remove_all(folder_); }

  [[nodiscard]] const std::string& folder() const { return folder_; }
  [[nodiscard]] std::string path(const std::string& name) const { return folder_ + "/" + name; }

  std::string write(const std::string& name, const std::string& text) const {
    std::ofstream(path(name), std::ios::binary) << text;
    return path(name);
  }

  [[nodiscard]] std::string read(const std::string& name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::string folder_;
};

}  // namespace quillpress::cli
