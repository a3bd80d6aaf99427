// The streams of text files. Paths come from Full_Path.

#pragma once

#include <memory>
#include <string>

#include "system/file_service.h"

namespace rivelt {

// Failure: there is no such file, it must not be read, or another program writes to it.
std::unique_ptr<Read_Stream> Open_Read_Stream(const std::wstring& path);

// As CreateTextFile. A read-only file of that name is not overwritten but a Failure.
std::unique_ptr<Write_Stream> Make_Write_Stream(const std::wstring& path, bool overwrite,
                                                bool unicode);

}  // namespace rivelt
