// A folder of the machine, filled and looked at by the standard library.

#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "files_fixture.h"

namespace rivelt {

// Its paths are native ones as well, as long as the name has no "\\".
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

  // Defined beside the tests of each machine. The folder is the Wine prefix as well, if there is
  // one.
  std::unique_ptr<File_System_Object> Files() override;
  Text Path(Text_View name) const override { return Root.u16string() + u"/" + Text(name); }

  void Plant(Text_View name, std::string_view bytes) override {
    EXPECT_TRUE(std::ofstream(std::filesystem::path(Path(name)), std::ios::binary)
                << bytes << std::flush);
  }
  void Make_Read_Only(Text_View name) override {
    permissions(Path(name), std::filesystem::perms::owner_read);
  }
  Names Names_In(Text_View folder) const override {
    Names names;
    for (const auto& entry : std::filesystem::directory_iterator(Path(folder))) {
      names.push_back(entry.path().filename().u16string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path Root;
};

}  // namespace rivelt
