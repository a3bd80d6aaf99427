// A disk in memory: for tests and benchmarks.

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "text/letter_case.h"
#include "text/text.h"

namespace rivelt {

struct Memory_Node;

// The names in a folder, in the order of a walk.
using Memory_Names = std::map<Name_Key, std::shared_ptr<Memory_Node>>;

// A file or folder, whatever its names.
struct Memory_Node {
  std::uint64_t Id = 0;  // no other node ever has it
  bool Is_Folder = false;

  std::string Bytes;
  bool Is_Read_Only = false;
  bool Is_Flushed = false;  // since its last write
  std::int64_t Modified = 0;
  std::int64_t Came = 0;  // when it got its newest name

  Memory_Names Names;
  Memory_Names Durable_Names;  // what a loss of power leaves

  Text Content() const;  // of UTF-16 with its mark, else of UTF-8
};

// What is on the disk, by path. Letter case does not count, "/" is "\", several in a row are one,
// and ".." is the folder above. What a test does here is safe from a loss of power at once; what
// the program does is so after Flush.
class Memory_Disk {
 public:
  using Node_Pointer = std::shared_ptr<Memory_Node>;

  struct Item {
    Text Path;  // with every name as it is on the disk, and one "\" between two of them
    Node_Pointer Node;

    bool Is_File() const { return Node && !Node->Is_Folder; }
    bool Is_Folder() const { return Node && Node->Is_Folder; }
    Text Content() const { return Node->Content(); }
  };

  // With the root and a working folder.
  Memory_Disk();

  // Another disk with the same on it, in nodes of its own with the same Ids, of which nothing is
  // locked.
  Memory_Disk(const Memory_Disk& other);
  Memory_Disk& operator=(const Memory_Disk&) = delete;

  // Without a node if there is nothing, or the path is none that a file can have.
  Item Find(Text_View path) const;

  // Directly in the folder, in the order of their names.
  std::vector<Item> In_Folder(Text_View path, bool folders) const;

  // Whether anything must make way for a file or folder to be made there. Failure: nothing can be
  // made there, because there is no such folder or nothing can have this path.
  bool Is_Taken(Text_View path) const;

  // The path of something new, with the names of its folders as they are on the disk. Failure: as
  // above.
  Text Place_Of_New(Text_View path) const;

  // A new file, which Link is still to give a name.
  Node_Pointer Make_File(std::string bytes);
  Node_Pointer Make_Folder();

  // Gives the node this name, as given. What is in the way goes. Failure: as above.
  void Link(Text_View path, Node_Pointer node);
  void Unlink(Text_View path);

  std::uint32_t Number_Of_Names(const Memory_Node& file) const;

  static Text Name(Text_View path) { return Text(path.substr(path.rfind(u'\\') + 1)); }
  static Text Below(Text_View folder, Text_View name);

  // The folder that the path's last component is in.
  static Text Parent(Text_View path);

  // Names of files that differ in letter case only are then two files. A path leads to the name
  // that is spelled like it, else to the first in the order of a walk that fits. Names of folders
  // never are apart, nor are those of a file and a folder.
  bool Tells_Letter_Case_Apart = false;

  // That of the next write, in nanoseconds since 1970. A write takes a millisecond.
  std::int64_t Time;

  // Missing parent folders are made. A file of that name is replaced, by another
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
  struct Place {
    Node_Pointer Folder;
    Text Name;
  };

  // Failure: as of Is_Taken.
  Place Place_Of(Text_View path) const;
  void Write(Memory_Node& file, std::string bytes);

  Node_Pointer Root;
  Node_Pointer Working_Folder;
  Memory_Names::iterator In_The_Way(const Place& place) const;

  std::uint64_t Last_Id = 0;
  void Put(Text_View path, Node_Pointer node);
  void Make_Name_Durable(Text_View path);
};

}  // namespace rivelt
