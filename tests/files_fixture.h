// The machine's files for the tests: a folder that was empty at first and goes with the test,
// reached by the back end and, so that this is not tested by itself, by the standard library.

#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/file_service.h"

namespace rivelt {

using Names = std::vector<Text>;

template <class Item>
Names Names_Of_Items(const Collection<Item>& items) {
  Names names;
  for (const auto& item : items) names.push_back(item->name());
  return names;
}

// What differs from machine to machine; defined beside the tests of each.
std::filesystem::path To_Native(Text_View path);
Text From_Native(const std::filesystem::path& path);
std::unique_ptr<File_System_Object> Files_Of_Machine(const std::filesystem::path& wine_prefix);

// Every name is a path below the folder, with "/" between folders; a thing that does not work fails
// the test.
class Machine_Folder {
 public:
  explicit Machine_Folder(const std::filesystem::path& parent = testing::TempDir()) {
    for (int i = 0; Root.empty() || !std::filesystem::create_directory(Root); ++i) {
      Root = parent / ("rivelt-test-" + std::to_string(i));
    }
  }
  ~Machine_Folder() {
    std::error_code none;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Root, none)) {
      if (!entry.is_symlink()) permissions(entry.path(), std::filesystem::perms::owner_all, none);
    }
    std::filesystem::remove_all(Root, none);
  }
  Machine_Folder(const Machine_Folder&) = delete;
  Machine_Folder& operator=(const Machine_Folder&) = delete;

  std::filesystem::path Native(const std::filesystem::path& name) const { return Root / name; }
  Text Path(Text_View name) const { return From_Native(Root) + u"\\" + Text(name); }

  void Plant(Text_View name, std::string_view bytes) const {
    EXPECT_TRUE(std::ofstream(Native(To_Native(name)), std::ios::binary) << bytes << std::flush);
  }
  void Plant_Folder(Text_View name) const {
    EXPECT_TRUE(std::filesystem::create_directory(Native(To_Native(name))));
  }
  void Make_Read_Only(Text_View name) const {
    permissions(Native(To_Native(name)), std::filesystem::perms::owner_read);
  }
  std::string Bytes(Text_View name) const {
    std::ifstream file(Native(To_Native(name)), std::ios::binary);
    EXPECT_TRUE(file);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // The names of all that stands in a folder, hidden things too, by code unit. "" is the folder.
  Names Names_In(Text_View folder) const {
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

class Files_Test : public testing::Test {
 protected:
  Text Path(Text_View name) const { return Machine.Path(name); }
  std::filesystem::path Native(const std::filesystem::path& name) const {
    return Machine.Native(name);
  }
  File_System_Object& Files() { return *System; }
  Text Read(Text_View path) {
    return Files().GetFile(path)->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  }
  void Write(Text_View path, Text_View text, bool overwrite = true) {
    const auto stream = Files().CreateTextFile(path, overwrite, false);
    stream->Write(text);
    stream->Close();
  }

  Machine_Folder Machine;
  // The folder is the Wine prefix as well, where there is one.
  std::unique_ptr<File_System_Object> System = Files_Of_Machine(Machine.Native(""));
};

}  // namespace rivelt
