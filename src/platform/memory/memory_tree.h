// Files and folders in memory, under their names.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
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

  Memory_Names Names;
  Memory_Names Durable_Names;  // what a loss of power leaves

  Text Content() const;  // of UTF-16 with its mark, else of UTF-8
};

// What is on the disk, by path. Letter case does not count, "/" is "\", several in a row are one,
// and ".." is the folder above.
class Memory_Tree {
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
  Memory_Tree();

  // Has nodes of its own, with the same Ids.
  Memory_Tree(const Memory_Tree& other);
  Memory_Tree& operator=(const Memory_Tree&) = delete;

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

 protected:
  struct Place {
    Node_Pointer Folder;
    Text Name;
  };

  // Failure: as of Is_Taken.
  Place Place_Of(Text_View path) const;
  void Write(Memory_Node& file, std::string bytes);

  Node_Pointer Root;
  Node_Pointer Working_Folder;

 private:
  Memory_Names::iterator In_The_Way(const Place& place) const;

  std::uint64_t Last_Id = 0;
};

}  // namespace rivelt
