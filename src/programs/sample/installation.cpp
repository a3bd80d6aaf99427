#include "programs/sample/installation.h"

#include <system_error>
#include <vector>

#include "programs/sample/file_writing.h"
#include "programs/sample/global_catalogue.h"
#include "programs/sample/random_source.h"
#include "programs/sample/shape.h"

namespace rivelt::sample {

namespace fs = std::filesystem;

void Write_Installation(const fs::path& folder, const Installation_Plan& plan) {
  fs::create_directories(folder);
  if (!fs::is_empty(folder)) {
    throw fs::filesystem_error("will not write into a folder that is not empty", folder,
                               std::make_error_code(std::errc::directory_not_empty));
  }
  const Random_Source random(plan.Seed);
  const std::vector<Shape> shapes = Invent_Shapes(plan.Shapes);
  fs::create_directory(folder / "Global");
  Write_Text_File(folder / "Global" / "tsection.dat", Global_Catalogue(shapes, random.Part(0)));
  for (std::int64_t i = 0; i < plan.Routes; ++i) {
    Write_Route(folder / "Routes", Invent_Route(static_cast<std::size_t>(i)), shapes, plan.World,
                i == 0, random.Part(static_cast<std::uint64_t>(i) + 1));
  }
}

}  // namespace rivelt::sample
