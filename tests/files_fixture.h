// An empty folder and the back end that reaches it, for the tests that every back end passes.

#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "system/file_service.h"

namespace rivelt {

using Names = std::vector<Text>;

template <class Item>
Names Names_Of_Items(const Collection<Item>& items) {
  Names names;
  for (const auto& item : items) names.push_back(item->name());
  return names;
}

// Every name is a path below the folder, with "/" between folders. What a test does here does not
// go through the back end; a thing that does not work fails the test.
class Test_Folder {
 public:
  virtual ~Test_Folder() = default;

  virtual std::unique_ptr<File_System_Object> Files() = 0;
  virtual Text Path(Text_View name) const = 0;
  virtual void Plant(Text_View name, std::string_view bytes) = 0;
  virtual void Make_Read_Only(Text_View name) = 0;

  // The names of all that is in a folder, hidden things too, by code unit. "" is the folder.
  virtual Names Names_In(Text_View folder) const = 0;
};

// Defined beside the tests of each back end. It goes with the test. Elsewhere is on another volume
// than the others; null if there is none.
std::unique_ptr<Test_Folder> Make_Test_Folder(bool elsewhere = false);

class Files_Test : public testing::Test {
 protected:
  Files_Test() { Files().Set_Root(Path(u"")); }

  Text Path(Text_View name) const { return Machine.Path(name); }
  File_System_Object& Files() { return *System; }
  Text Read(Text_View path) {
    return Files().GetFile(path)->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  }
  std::string Bytes(Text_View path) {
    std::string bytes;
    Files().GetFile(path)->Read_Bytes([&](std::string_view piece) { bytes += piece; });
    return bytes;
  }
  void Write(Text_View path, Text_View text, bool overwrite = true) {
    const auto stream = Files().CreateTextFile(path, overwrite, false);
    stream->Write(text);
    stream->Close();
  }

  // Why the step fails.
  template <class Step>
  static Text Reason(const Step& step) try {
    step();
    return u"(no failure)";
  } catch (const Failure& failure) {
    return failure.Reason();
  }

  const std::unique_ptr<Test_Folder> Folder_Of_Test = Make_Test_Folder();
  Test_Folder& Machine = *Folder_Of_Test;
  const std::unique_ptr<File_System_Object> System = Machine.Files();
};

}  // namespace rivelt
