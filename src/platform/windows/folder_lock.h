#pragma once

#include <memory>
#include <string>

#include "system/file_service.h"

namespace rivelt {

// As File_System_Object::Lock. The lock is a named object of this computer: it holds against every
// program of ours that runs on it, whichever path leads that program to the folder.
std::unique_ptr<Folder_Lock> Lock_Folder(const std::wstring& path);

}  // namespace rivelt
