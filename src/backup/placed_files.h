// Files by their places below a folder: those of a route that an update can replace, directly in
// its folder or in its World folder, and in the same layout those that are kept of it.

#pragma once

#include <memory>
#include <set>
#include <vector>

#include "system/file_service.h"
#include "text/text.h"

namespace rivelt {

// The part of a place after its folder.
Text_View Name_In(Text_View place);

// The part before it with its separator, or nothing.
Text_View Folder_In(Text_View place);

class Placed_Files {
 public:
  // The files must outlive the object.
  Placed_Files(File_System_Object& files, Text_View folder) : Files(files), Folder_Path(folder) {}

  const Text& Path() const { return Folder_Path; }
  Text Path(Text_View place) const;
  bool Exists() const { return Files.FolderExists(Folder_Path); }

  // The file of that place, in any letter case; null if there is none.
  std::unique_ptr<File> Find(Text_View place) const;

  // Only the one with exactly that name.
  std::unique_ptr<File> Find_Exactly(Text_View place) const;

  // The place with its folder as that is spelled on disk.
  Text Own_Spelling(Text_View place) const;

  // Makes the folder of the place, and the one that this is about, if they are missing.
  void Make_Folder_Of(Text_View place);

  // Of every file in the folder and in its World folder.
  std::vector<Text> Places() const;

  // The folded places that more than one file has, in names that differ in letter case only.
  std::set<Text> Twins() const;

  // Returns when what is in the two folders is safe on disk.
  void Flush() const;

  // Deletes the files that were never finished.
  void Delete_Temporaries();

 private:
  bool Has_World() const;

  File_System_Object& Files;
  Text Folder_Path;
  mutable Text Last_Asked;
  mutable Text Last_Spelling;
};

}  // namespace rivelt
