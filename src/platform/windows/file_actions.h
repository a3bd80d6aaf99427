// What is done to a file as a whole. Paths come from Full_Path.

#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/windows/win32.h"
#include "system/file_service.h"

namespace rivelt {

using Take_Piece = std::function<void(std::string_view piece)>;

Owned_Handle Open_For_Reading(const std::wstring& path);

// As the members of File promise.
File_State State_Of_File(const std::wstring& path);
void Read_Bytes(const std::wstring& path, const Take_Piece& take);
void Delete_File(const std::wstring& path, bool force);
void Move_File(const std::wstring& source, const std::wstring& target);
void Copy_File(const std::wstring& source, const std::wstring& target);
void Keep_File(const std::wstring& source, const std::wstring& target);

// As MoveFolder.
void Move_Folder(const std::wstring& source, const std::wstring& target);

}  // namespace rivelt
