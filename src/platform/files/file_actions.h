// What is done to a file as a whole. Paths are native.

#pragma once

#include "platform/files/file_verbs.h"

namespace rivelt {

// The native path of the program's path. Failure: there is nothing of that kind.
Text Existing(File_Verbs& verbs, Text_View path, Kind kind);

// As File_Verbs::Place. Failure: there is a folder of that name, in any letter case.
Text Place_Of_Folder(File_Verbs& verbs, Text_View path);

// Failure: nothing is there.
Entry State_Of(const File_Verbs& verbs, const Text& path);

// Reads until all room is filled or the source ends. The number of bytes read.
std::size_t Fill(Source& source, char* bytes, std::size_t room);

// As the members of File.
void Delete_File(File_Verbs& verbs, const Text& path, bool force);
void Move_File(File_Verbs& verbs, const Text& path, const Text& target);
void Copy_File(File_Verbs& verbs, const Text& path, const Text& target);
void Keep_File(File_Verbs& verbs, const Text& path, const Text& target);

}  // namespace rivelt
