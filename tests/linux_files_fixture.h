// A Linux machine for the tests of files.

#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "files_contract.h"
#include "platform/linux/linux_files.h"
#include "text/utf8.h"

namespace rivelt {

class Linux_Machine : public Machine_Under_Test {
 public:
  // parent is a folder; the root is made in it. The root is the Wine prefix as well.
  explicit Linux_Machine(const std::string& parent = testing::TempDir())
      : Native_Root(Fresh_Folder(parent)), System(Native_Root) {}
  ~Linux_Machine() override { std::filesystem::remove_all(Native_Root); }

  File_System_Object& Files() override { return System; }
  Text Root() const override { return From_Utf8(Native_Root); }
  void Plant(Text_View name, std::string_view bytes) override {
    std::ofstream file(Native(To_Utf8(name)), std::ios::binary);
    file << bytes;
    file.close();
    EXPECT_TRUE(file.good()) << To_Utf8(name);
  }
  void Plant_Folder(Text_View name) override {
    EXPECT_TRUE(std::filesystem::create_directory(Native(To_Utf8(name)))) << To_Utf8(name);
  }
  void Make_Read_Only(Text_View name) override {
    std::filesystem::permissions(Native(To_Utf8(name)), std::filesystem::perms::owner_read);
  }
  std::string Bytes(Text_View name) const override {
    std::ifstream file(Native(To_Utf8(name)), std::ios::binary);
    EXPECT_TRUE(file.is_open()) << To_Utf8(name);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::vector<Text> Names(Text_View folder) const override {
    std::vector<Text> names;
    for (const auto& entry : std::filesystem::directory_iterator(Native(To_Utf8(folder))))
      names.push_back(From_Utf8(entry.path().filename().native()));
    std::sort(names.begin(), names.end());
    return names;
  }

  // The native path, which a name need not be UTF-8 for.
  std::string Native(const std::string& name) const { return Native_Root + "/" + name; }

 private:
  static std::string Fresh_Folder(std::string parent) {
    parent += "/rivelt-test-XXXXXX";
    if (mkdtemp(parent.data()) == nullptr) throw std::runtime_error("no folder to test in");
    return parent;
  }

  std::string Native_Root;
  Linux_File_System System;
};

}  // namespace rivelt
