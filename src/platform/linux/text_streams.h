// The streams of text files. Paths are native.

#pragma once

#include <memory>
#include <string>

#include "system/file_service.h"

namespace rivelt {

// Failure: there is no such regular file, or it must not be read.
std::unique_ptr<Read_Stream> Open_Read_Stream(const std::string& path);

// As CreateTextFile. A read-only file of that name is not overwritten but a Failure. One that is
// overwritten leaves its permissions to the new one, and a link to it goes on leading there.
std::unique_ptr<Write_Stream> Make_Write_Stream(const std::string& path, bool overwrite,
                                                bool unicode);

}  // namespace rivelt
