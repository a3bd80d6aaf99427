#pragma once

#include <cstdint>
#include <filesystem>

#include "programs/sample/route.h"
#include "text/text.h"

namespace rivelt::sample {

struct Installation_Plan {
  std::int64_t Routes = 4;
  World_Size World = {12, 40};  // of each route
  Long Shapes = 300;
  std::uint64_t Seed = 1;
};

// Writes an invented installation into the folder, which is made if it does not exist. The same
// plan gives the same bytes everywhere. Throws a std::filesystem::filesystem_error: the folder is
// not empty, and then nothing has been touched, or something cannot be written.
void Write_Installation(const std::filesystem::path& folder, const Installation_Plan& plan);

}  // namespace rivelt::sample
