// A Windows machine for the tests of files, reached by the plain calls of the system.

#pragma once

#include <string>

#include "files_contract.h"

namespace rivelt {

class Windows_Machine : public Machine_Under_Test {
 public:
  Windows_Machine();
  ~Windows_Machine() override;

  File_System_Object& Files() override { return *System; }
  Text Root() const override;
  void Plant(Text_View name, std::string_view bytes) override;
  void Plant_Folder(Text_View name) override;
  void Make_Read_Only(Text_View name) override;
  std::string Bytes(Text_View name) const override;
  std::vector<Text> Names(Text_View folder) const override;

  // The path as the system's calls take it.
  std::wstring Native(Text_View name) const;

 private:
  std::wstring Native_Root;
  std::unique_ptr<File_System_Object> System;
};

}  // namespace rivelt
