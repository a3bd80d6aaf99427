// A disk in memory: for tests and benchmarks.

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

#include "platform/memory/memory_tree.h"

namespace rivelt {

// What a test does to the disk behind the program's back, and what it sees there. All that a person
// does is safe from a loss of power at once; what the program does is so after Flush.
class Memory_Disk : public Memory_Tree {
 public:
  Memory_Disk() = default;

  // Another disk with the same on it, of which nothing is locked.
  Memory_Disk(const Memory_Disk& other)
      : Memory_Tree(other), Refuses_Links(other.Refuses_Links), On_Next_Read(other.On_Next_Read) {}

  // What is put brings the folders above it with it. A file of that name is replaced, by another
  // file: a name that was kept goes on having the old content.
  void Put_Folder(Text_View path);
  void Put_File(Text_View path, Text_View content);  // in UTF-16
  void Put_Bytes(Text_View path, std::string_view bytes);

  // The file gets another content under all its names and stays the same file.
  void Edit_In_Place(Text_View path, Text_View content);
  void Edit_Bytes_In_Place(Text_View path, std::string_view bytes);

  // Gives a file or folder another name in its folder, which may differ in letter case only.
  // Failure: the name is taken.
  void Rename(Text_View path, Text_View new_name);

  void Make_Read_Only(Text_View path);

  // With what is in it, if it is a folder. Nothing happens if there is none.
  void Remove(Text_View path);

  // The content of the file, or a text that no test writes.
  Text Content(Text_View path) const;

  // Of the files in the folder.
  std::vector<Text> Names(Text_View folder) const;

  // Makes durable: the names directly in the folder, those of folders too, and the content of its
  // files. Not the folder's own name, and nothing of the folders in it.
  void Flush(Text_View folder_path);

  // Each folder for whose path forgets is true goes back to the names that were durable in it: what
  // was made in it since is gone, folders with all that is in them; what was deleted, moved away or
  // replaced since is back. Names in any other folder survive. A file that moved from a folder that
  // forgets to one that does not then has both names. Folders are asked for from the top, under the
  // names that they have after the loss. A file whose content was not flushed since its last write
  // is empty, in any folder and under whatever name it survives. What is left is durable.
  void Lose_Power(const std::function<bool(Text_View folder_path)>& forgets);

  // Files have one name each: Keep copies.
  bool Refuses_Links = false;

  // The locked folders, by their Id.
  const std::shared_ptr<std::set<std::uint64_t>> Locked_Folders =
      std::make_shared<std::set<std::uint64_t>>();

  // Called when an operation on the disk is about to begin; what it throws comes out of it, and the
  // operation is not begun. A copy of the disk has none.
  std::function<void(bool changes_disk)> Before_Operation;
  void Begin_Operation() const {
    if (Before_Operation) Before_Operation(false);
  }
  void Begin_Change() const {
    if (Before_Operation) Before_Operation(true);
  }

  // Runs once, when the next file is read: the place to act in the middle of a command.
  std::function<void()> On_Next_Read;

 private:
  void Put(Text_View path, Node_Pointer node);
  void Make_Name_Durable(Text_View path);
};

}  // namespace rivelt
