// The files of a Linux machine.
//
// In a path of the program "\" and "/" separate, a drive letter is a link in the folder
// "dosdevices" of a Wine prefix, and letter case does not count for what exists. Several entries of
// a folder may differ in letter case alone. Below the installation's root every spelling of a
// folder leads to the first of them in the order of a walk, so that what is read as "world" and
// written as "World" is one folder. The root itself, and what is not below it, is taken as spelled
// where that exists, and so is a file at the end of a path.

#pragma once

#include <map>
#include <string>

#include "platform/files/file_verbs.h"

namespace rivelt {

class Linux_Files : public File_Verbs {
 public:
  explicit Linux_Files(const std::string& wine_prefix);

  void Set_Root(Text_View path) override;
  std::optional<Text> Find(Text_View path, Kind kind) override;
  Text Place(Text_View path) override;
  std::optional<Entry> Look(const Text& path) const override;
  std::vector<Name_Key> Names(const Text& folder, Kind kind) const override;
  std::unique_ptr<Source> Open(const Text& path) const override;
  std::unique_ptr<Draft> Make(const Text& path) override;
  void Make_Folder(const Text& path) override;
  bool Rename(const Text& path, const Text& target) override;
  bool Link(const Text& path, const Text& target) override;
  void Delete(const Text& path) override;
  void Delete_Folder(const Text& path) override;
  void Set_Mode(const Text& path, const Text& model) override;
  void Flush(const Text& folder) override;
  std::shared_ptr<void> Lock(const Text& folder) override;
  std::string Narrow(Text_View text) const override;

  // What the last system call has refused to do at the path, as errno says.
  Failure Refused_By_System(Text_View path) const;

 private:
  // Start is empty, or a folder's path that ends in "/"; Rest begins and ends with a name, and has
  // one "/" between two.
  struct Spelled_Path {
    Text Start;
    Text Rest;
  };

  bool Is_Kind(const Text& path, Kind kind) const;
  std::optional<Text> First_That_Fits(const Text& folder, Text_View name, Kind kind) const;
  std::optional<Text> Enter(const Text& folder, Text_View name, bool is_below_root) const;
  Spelled_Path Spell(Text_View path) const;
  std::size_t Length_Of_Root(const Spelled_Path& spelled) const;
  std::optional<Text> Find_Folder(const Spelled_Path& spelled);
  std::optional<Text> Folder_Around(Spelled_Path spelled);

  Text Drives;
  std::optional<Spelled_Path> Installation;

  // Where folders below the root have been found. Only reading the folder above can show that no
  // other spelling comes first, which would be too slow for every file of a route.
  std::map<Text, Text> Known_Folders;
};

// The files of the machine. Drive letters are those of the Wine prefix, a path in bytes.
std::unique_ptr<File_System_Object> Files_Of_Linux(const std::string& wine_prefix);

// Renames unless target is taken; paths are bytes. False: errno is EEXIST if target is taken, EXDEV
// if the two are on two file systems.
bool Rename_To_Free_Name(const std::string& path, const std::string& target);

// A new file for that path.
std::unique_ptr<Draft> Make_Draft(const Linux_Files& files, const Text& path);

}  // namespace rivelt
