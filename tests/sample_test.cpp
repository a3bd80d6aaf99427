#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <string>

#include "programs/sample/installation.h"

namespace rivelt::sample {
namespace {

namespace fs = std::filesystem;

class Sample : public testing::Test {
 protected:
  Sample() { fs::remove_all(Root); }
  ~Sample() override { fs::remove_all(Root); }

  // The content of every file of an installation, by its path.
  std::map<std::string, std::string> Written(const std::string& folder, std::uint64_t seed) {
    Installation_Plan plan;
    plan.Seed = seed;
    Write_Installation(Root / folder, plan);
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(Root / folder)) {
      if (!entry.is_regular_file()) continue;
      std::ifstream file(entry.path(), std::ios::binary);
      files[entry.path().lexically_relative(Root / folder).generic_string()] = {
          std::istreambuf_iterator<char>(file), {}};
    }
    return files;
  }

  // Tests run at the same time, of several builds too.
  fs::path Root = fs::path(testing::TempDir()) /
                  ("rivelt_sample_test-" + std::to_string(std::random_device()()));
};

TEST_F(Sample, Write_Installation_The_Same_Seed_Twice_Gives_The_Same_Bytes) {
  const auto first = Written("first", 7);
  EXPECT_EQ(first, Written("second", 7));
  EXPECT_NE(first, Written("third", 8));
  EXPECT_GT(first.size(), 50u);
}

TEST_F(Sample, Write_Installation_A_Folder_In_Use_Is_Refused_And_Left_Alone) {
  fs::create_directories(Root / "mine");
  EXPECT_THROW(Write_Installation(Root, {}), fs::filesystem_error);
  EXPECT_FALSE(fs::exists(Root / "Global"));
}

}  // namespace
}  // namespace rivelt::sample
