// The entries of a folder.

#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace rivelt {

// The path of an entry. folder is empty for the working directory.
std::string Below(const std::string& folder, std::string_view name);

// Visits every name in the folder but "." and "..", in no order, with its kind as d_type says.
// Failure: the folder cannot be read.
void For_Each_Entry(const std::string& folder,
                    const std::function<void(const char* name, unsigned char kind)>& visit);

// The names of one kind, S_IFREG or S_IFDIR, in the order of a walk. A link is of the kind that it
// leads to, a link that leads nowhere of none. Of folders that differ in letter case alone the
// first only. Failure: as above.
std::vector<std::string> Names_In_Order(const std::string& folder, mode_t kind);

}  // namespace rivelt
