#pragma once

#include <memory>
#include <string>

#include "system/file_service.h"

namespace rivelt {

// An advisory lock on the folder itself, so that it needs no file and dies with the process. The
// path is native. Failure: it is locked already, or it is no folder.
std::unique_ptr<Folder_Lock> Lock_Folder(const std::string& path);

}  // namespace rivelt
