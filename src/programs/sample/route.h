#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "programs/sample/random_source.h"
#include "programs/sample/shape.h"
#include "text/text.h"

namespace rivelt::sample {

struct Route {
  // What the numbers of its dynamic track need.
  enum class Local_File { Needs_Both_Deltas, Needs_None, Is_Missing };

  Text Name;           // as it stands in the .trk file, with its quotes if it has any
  std::string Folder;  // the names of folders and files have their letter case from the wild
  std::string World_Folder;
  std::string Local_File_Name;
  Local_File Kind = Local_File::Needs_Both_Deltas;
};

// The number-th route. The first one is also the first by name.
Route Invent_Route(std::size_t number);

struct World_Size {
  std::int64_t Files = 0;
  std::int64_t Objects = 0;  // the mean number of track objects in a file
};

// Writes the route's folder into routes_folder. Its first world file has an object of every kind;
// has_binary_file makes the last one, if there are several, a binary one. Throws a
// std::filesystem::filesystem_error.
void Write_Route(const std::filesystem::path& routes_folder, const Route& route,
                 const std::vector<Shape>& shapes, World_Size size, bool has_binary_file,
                 Random_Source random);

}  // namespace rivelt::sample
