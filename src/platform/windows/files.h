// The files of a Windows machine.

#pragma once

#include <memory>

#include "platform/files/file_verbs.h"
#include "platform/windows/win32.h"

namespace rivelt {

// Letter case and links are the system's own business. A file that another program has open for
// writing is not read: half of what it writes would pass for the whole. A file or folder that
// another program holds for a moment, as a virus scanner does, is waited for.
std::unique_ptr<File_System_Object> Windows_Files();

// Paths as the file calls take them: absolute, with the prefix that lifts the limit on their
// length. path is the program's. Failure: it is no path of a file or folder (empty, the name of a
// device, a character 0 inside).
std::wstring Full_Path(Text_View path);

// The path of what exists, with its last name as it is on disk.
std::wstring As_On_Disk(std::wstring full_path);

// What the last system call has refused to do at the path, as GetLastError says.
Failure Refused_By_System(const File_Verbs& verbs, Text_View path);

// Whether a flush that ended with this error has lost something, as opposed to one that the file
// system does not know.
bool Says_Lost(DWORD error);

// Does the step again while another program is in its way, for two seconds at most.
// False: it failed; GetLastError says why.
bool Patiently(const std::function<bool()>& step);

// A new file for that path.
std::unique_ptr<Draft> Make_Draft(const File_Verbs& verbs, const Text& path);

}  // namespace rivelt
