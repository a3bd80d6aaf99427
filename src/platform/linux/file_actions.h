// Files that change their place or get a second one. All paths are native.

#pragma once

#include <string>

namespace rivelt {

// Across file systems the file is copied. It gives up its name before the copy gets to, so that a
// process that is killed never leaves both. Failure: to is taken, or it cannot be done; both are as
// they were then.
void Move_File(const std::string& from, const std::string& to);

// The content, with its permissions and times; of a link that of the file behind it. Failure: as
// above.
void Copy_File(const std::string& from, const std::string& to);

// Gives a file that has one name a second one, and copies any other file, a link, and where the
// file system has no second name for it. Failure: as above.
void Keep_File(const std::string& from, const std::string& to);

}  // namespace rivelt
