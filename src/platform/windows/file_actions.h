// What is done to a file as a whole. Paths come from Full_Path.

#pragma once

#include <string>

#include "platform/windows/win32.h"

namespace rivelt {

Owned_Handle Open_For_Reading(const std::wstring& path);

// As the members of File promise.
void Delete_File(const std::wstring& path, bool force);
void Move_File(const std::wstring& source, const std::wstring& target);
void Copy_File(const std::wstring& source, const std::wstring& target);
void Keep_File(const std::wstring& source, const std::wstring& target);

}  // namespace rivelt
