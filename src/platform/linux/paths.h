// How the program's paths lead to files of a Linux machine. "\" and "/" separate, a drive letter is
// a link in the folder "dosdevices" of a Wine prefix, and letter case does not count for what
// exists. Native paths are bytes.
//
// Several entries of a folder may differ in letter case alone. Below the installation's root every
// spelling of a folder leads to the first of them in the order of a walk, so that what is read as
// "world" and written as "World" is one folder. The root itself, and what is not below it, is taken
// as spelled where that exists, and so is a file at the end of a path.

#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "text/text.h"

namespace rivelt {

class Native_Paths {
 public:
  explicit Native_Paths(const std::string& wine_prefix) : Drives(wine_prefix + "/dosdevices/") {}

  void Set_Root(Text_View path);

  // Nothing if there is no file, or no folder, of that name in any letter case. Failure: the system
  // does not say.
  std::optional<std::string> Look_For_File(Text_View path);
  std::optional<std::string> Look_For_Folder(Text_View path);

  // Failure: as above, or there is none.
  std::string Existing_File(Text_View path);
  std::string Existing_Folder(Text_View path);

  // Where something new of that name belongs, whether or not the name is taken. Failure: its
  // parent does not exist.
  std::string To_Be_Made(Text_View path);

  // Failure: as above, or there is a folder of that name.
  std::string Folder_To_Be_Made(Text_View path);

 private:
  // Start is empty, or a folder's path that ends in "/"; Rest begins and ends with a component, and
  // has one "/" between two.
  struct Spelled_Path {
    std::string Start;
    std::string Rest;
  };

  Spelled_Path Spell(Text_View path) const;
  std::size_t Length_Of_Root(const Spelled_Path& spelled) const;
  std::optional<std::string> Find_Folder(const Spelled_Path& spelled);
  std::optional<std::string> Folder_Around(Spelled_Path spelled);

  std::string Drives;
  std::optional<Spelled_Path> Root;

  // Where folders below the root have been found. Only reading the folder above can show that no
  // other spelling comes first, which would be too slow for every file of a route.
  std::map<std::string, std::string> Known_Folders;
};

// The last component, empty for the root.
std::string_view Name_Of(std::string_view native_path);

// The folder that it is in.
std::string Folder_Of(const std::string& native_path);

}  // namespace rivelt
