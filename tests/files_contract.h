// The tests that every back end of the files passes. A back end joins in with one
// INSTANTIATE_TEST_SUITE_P(Its_Name, Files_Contract, testing::Values(&Make_Its_Machine)).

#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/file_service.h"

namespace rivelt {

// A machine's own way to files, so that a back end is not tested by itself. Every name is a path
// below the root, with "/" between folders; a thing that does not work fails the test.
class Machine_Under_Test {
 public:
  virtual ~Machine_Under_Test() = default;

  virtual File_System_Object& Files() = 0;

  // A folder that was empty at first and goes with this object.
  virtual Text Root() const = 0;

  virtual void Plant(Text_View name, std::string_view bytes) = 0;
  virtual void Plant_Folder(Text_View name) = 0;
  virtual void Make_Read_Only(Text_View name) = 0;
  virtual std::string Bytes(Text_View name) const = 0;

  // The names of all that stands in a folder, hidden things too, by code unit. "" is the root.
  virtual std::vector<Text> Names(Text_View folder) const = 0;
};

class Files_Test : public testing::Test {
 protected:
  explicit Files_Test(std::unique_ptr<Machine_Under_Test> machine) : Machine(std::move(machine)) {}

  Text Path(Text_View name) const { return Machine->Root() + u"\\" + Text(name); }
  File_System_Object& Files() { return Machine->Files(); }
  Text Read(Text_View path) {
    return Files().GetFile(path)->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  }
  void Write(Text_View path, Text_View text, bool overwrite = true) {
    const auto stream = Files().CreateTextFile(path, overwrite, false);
    stream->Write(text);
    stream->Close();
  }

  std::unique_ptr<Machine_Under_Test> Machine;
};

using Make_Machine = std::unique_ptr<Machine_Under_Test> (*)();

class Files_Contract : public Files_Test, public testing::WithParamInterface<Make_Machine> {
 protected:
  Files_Contract() : Files_Test(GetParam()()) {}
};

using Names = std::vector<Text>;

template <class Item>
Names Names_Of_Items(const Collection<Item>& items) {
  Names names;
  for (const auto& item : items) names.push_back(item->name());
  return names;
}

}  // namespace rivelt
