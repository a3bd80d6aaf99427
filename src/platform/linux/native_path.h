// How the program's paths lead to files of a Linux machine. "\" and "/" separate, a drive letter is
// a link in the folder "dosdevices" of a Wine prefix, and letter case does not count for what
// exists. Native paths are bytes.

#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

#include "text/text.h"

namespace rivelt {

class Native_Paths {
 public:
  // A file or folder and what the system tells of it.
  struct Found {
    std::string Path;
    struct stat State {};

    bool Is_File() const { return S_ISREG(State.st_mode); }
    bool Is_Folder() const { return S_ISDIR(State.st_mode); }
  };

  explicit Native_Paths(const std::string& wine_prefix) : Drives(wine_prefix + "/dosdevices/") {}

  // Nothing if there is nothing of that name, in any letter case. Failure: the system does not say.
  std::optional<Found> Look_For(Text_View path) const;

  // Failure: as above, or there is nothing of that name.
  Found Existing(Text_View path) const;

  // Where something new of that name belongs, whether or not the name is taken. Failure: its
  // parent does not exist.
  std::string To_Be_Made(Text_View path) const;

 private:
  // Start is empty, or a folder's path that ends in "/"; Rest begins and ends with a component.
  struct Spelled_Path {
    std::string Start;
    std::string Rest;
  };

  Spelled_Path Spell(Text_View path) const;
  static std::optional<Found> Find(const Spelled_Path& spelled);

  std::string Drives;
};

// The last component, empty for the root.
std::string_view Name_Of(std::string_view native_path);

// The folder that it stands in.
std::string Folder_Of(const std::string& native_path);

}  // namespace rivelt
