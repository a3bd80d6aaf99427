#pragma once

#include <cstdint>
#include <filesystem>

#include "text/text.h"

namespace rivelt::sample {

struct Installation_Plan {
  std::int64_t Routes = 4;
  std::int64_t World_Files = 12;  // of each route
  std::int64_t Objects = 40;      // the mean number of track objects in a world file
  Long Shapes = 300;
  std::uint64_t Seed = 1;
};

// Writes an invented installation into the folder, which is made if it does not exist. The same
// plan gives the same bytes everywhere. Throws a std::filesystem::filesystem_error: the folder is
// not empty, and then nothing has been touched, or something cannot be written.
void Write_Installation(const std::filesystem::path& folder, const Installation_Plan& plan);

}  // namespace rivelt::sample
