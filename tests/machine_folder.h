// A folder of the machine, filled and looked at by the standard library.

#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "files_fixture.h"

namespace rivelt {

// What differs from machine to machine; defined beside the tests of each.
std::filesystem::path To_Native(Text_View path);
Text From_Native(const std::filesystem::path& path);
std::unique_ptr<File_System_Object> Files_Of_Machine(const std::filesystem::path& wine_prefix);

class Machine_Folder : public Test_Folder {
 public:
  explicit Machine_Folder(const std::filesystem::path& parent = testing::TempDir()) {
    for (int i = 0; Root.empty() || !std::filesystem::create_directory(Root); ++i) {
      Root = parent / ("rivelt-test-" + std::to_string(i));
    }
  }
  ~Machine_Folder() override {
    std::error_code none;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Root, none)) {
      if (!entry.is_symlink()) permissions(entry.path(), std::filesystem::perms::owner_all, none);
    }
    std::filesystem::remove_all(Root, none);
  }
  Machine_Folder(const Machine_Folder&) = delete;
  Machine_Folder& operator=(const Machine_Folder&) = delete;

  std::filesystem::path Native(const std::filesystem::path& name) const { return Root / name; }
  // The folder is the Wine prefix as well, where there is one.
  std::unique_ptr<File_System_Object> Files() override { return Files_Of_Machine(Root); }
  Text Path(Text_View name) const override { return From_Native(Root) + u"\\" + Text(name); }

  void Plant(Text_View name, std::string_view bytes) override {
    EXPECT_TRUE(std::ofstream(Native(To_Native(name)), std::ios::binary) << bytes << std::flush);
  }
  void Plant_Folder(Text_View name) override {
    EXPECT_TRUE(std::filesystem::create_directory(Native(To_Native(name))));
  }
  void Make_Read_Only(Text_View name) override {
    permissions(Native(To_Native(name)), std::filesystem::perms::owner_read);
  }
  std::string Bytes(Text_View name) const override {
    std::ifstream file(Native(To_Native(name)), std::ios::binary);
    EXPECT_TRUE(file);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  Names Names_In(Text_View folder) const override {
    Names names;
    for (const auto& entry : std::filesystem::directory_iterator(Native(To_Native(folder)))) {
      names.push_back(From_Native(entry.path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path Root;
};

class Machine_Files_Test : public Files_Test {
 protected:
  std::filesystem::path Native(const std::filesystem::path& name) const {
    return static_cast<const Machine_Folder&>(Machine).Native(name);
  }
};

}  // namespace rivelt
