// What is in a folder. Paths come from Full_Path.

#pragma once

#include <string>
#include <vector>

namespace rivelt {

// The names of the files, or of the folders, in the order of a walk. A link is of the kind that it
// leads to, a link that leads nowhere of none. Failure: the folder cannot be read.
std::vector<std::wstring> Names_In_Order(const std::wstring& folder, bool folders);

}  // namespace rivelt
