// A disk in memory: for tests and benchmarks.

#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "text/text.h"

namespace rivelt {

// What is on the disk, by path. Letter case does not count, "/" is "\", several in a row are one,
// and ".." is the folder above. A file that is put there brings its folders with it.
class Memory_Disk {
 public:
  struct Item {
    Text Path;  // as given, but with one "\" between two components
    bool Is_Folder = false;
    std::string Bytes;
    bool Is_Narrow = false;  // UTF-8, else UTF-16
    bool Is_Read_Only = false;
    int Id = 0;  // no other item ever has it

    Text Content() const;
  };

  // With the root and a working folder.
  Memory_Disk();

  void Put_Folder(Text_View path);
  void Put_File(Text_View path, Text_View content);  // in UTF-16
  void Put_Bytes(Text_View path, std::string_view bytes, bool is_narrow = false);
  void Put_Copy(const Item& file, Text_View path);

  // With what is in it, if it is a folder.
  void Remove(Text_View path);

  // Gives a folder another path, with what is in it.
  void Rename_Folder(Text_View path, Text_View new_path);

  // Null if there is none, or the path is none that a file can have.
  const Item* Find(Text_View path) const;
  Item* Find(Text_View path);

  // The content of the file, or a text that no test writes.
  Text Content(Text_View path) const;

  // Directly in the folder, in the order of their names.
  std::vector<const Item*> In_Folder(Text_View path, bool folders) const;

  // Of the files in the folder.
  std::vector<Text> Names(Text_View folder) const;

  static Text Name(Text_View path) { return Text(path.substr(path.rfind(u'\\') + 1)); }

  // Failure: no file or folder can have this path.
  static void Require_Usable(Text_View path);

  // The folder that the path's last component is in.
  static Text Parent(Text_View path);

  // Whether another program has locked every folder. The form of an earlier test may outlive its
  // disk, and so may a lock.
  const std::shared_ptr<bool> Is_Locked = std::make_shared<bool>(false);

  // The folders that this program has locked, by their Id.
  const std::shared_ptr<std::set<int>> Locked_Folders = std::make_shared<std::set<int>>();

  // Runs once, when the next file is read: the place to act in the middle of a command.
  std::function<void()> On_Next_Read;

 private:
  Item& Put(Text_View path, Item item);

  std::map<Text, Item> Items;
  int Last_Id = 0;
};

}  // namespace rivelt
