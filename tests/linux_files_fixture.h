// A Linux machine for the tests of files.

#pragma once

#include <string>

#include "files_contract.h"
#include "platform/linux/linux_files.h"

namespace rivelt {

class Linux_Machine : public Machine_Under_Test {
 public:
  // parent is a folder; the root is made in it.
  explicit Linux_Machine(const std::string& parent = testing::TempDir());
  ~Linux_Machine() override;

  File_System_Object& Files() override { return System; }
  Text Root() const override;
  void Plant(Text_View name, std::string_view bytes) override;
  void Plant_Folder(Text_View name) override;
  void Make_Read_Only(Text_View name) override;
  std::string Bytes(Text_View name) const override;
  std::vector<Text> Names(Text_View folder) const override;

  // The native path, which a name need not be UTF-8 for.
  std::string Native(const std::string& name) const { return Native_Root + "/" + name; }

 private:
  std::string Native_Root;
  Linux_File_System System;
};

}  // namespace rivelt
