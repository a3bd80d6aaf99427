// Paths as the file calls take them: absolute, with the prefix that lifts the limit on their
// length.

#pragma once

#include <string>

#include "text/text.h"

namespace rivelt {

// The path, seen from the working directory. Failure: it is no path of a file or folder (empty, the
// name of a device, a character 0 inside).
std::wstring Full_Path(Text_View path);

// The path of an entry of the folder, with the name exactly as given.
std::wstring Path_In(const std::wstring& folder, const std::wstring& name);

// The path of what exists, with its last component as it is on disk.
std::wstring As_On_Disk(std::wstring full_path);

// What comes after the last separator.
Text Last_Name(const std::wstring& full_path);

// Whether something exists at the path, and is a folder. Links are followed. Failure: it cannot
// be told.
struct Path_State {
  bool Exists = false;
  bool Is_Folder = false;
  bool Is_Read_Only = false;
};
Path_State State_Of(const std::wstring& full_path);

}  // namespace rivelt
