#pragma once

#include <string>

namespace rivelt {

// Both paths are native. Across file systems the file is copied and then removed, its permissions
// and times with it; of a link it is the file behind it that is copied. Failure: to is taken, or it
// cannot be done; both are as they were then.
void Move_File(const std::string& from, const std::string& to);

}  // namespace rivelt
