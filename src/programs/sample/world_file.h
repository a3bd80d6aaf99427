#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "programs/sample/dynamic_track.h"
#include "programs/sample/global_catalogue.h"
#include "programs/sample/random_source.h"
#include "text/text.h"

namespace rivelt::sample {

// What the world files of a route are made of.
struct Route_Track {
  Text Folder;  // of the route
  std::vector<Shape> Shapes;
  std::vector<Dynamic_Track> Own;
};

// An object of a world file as the route's track database knows it.
struct Placed_Track {
  std::int64_t Uid = 0;
  Long Shape_Id = 0;
  std::vector<Long> Sections;  // one after the other; of a junction one for each path
  bool Is_Junction = false;
  Text Place;  // the three coordinates
};

struct World {
  Text File;
  std::vector<Placed_Track> Track;
};

// A world file with so many track objects. Most have the right id, one in forty a wrong one. Others
// have a shape that the catalogue does not list: an unknown one, or one of the route's own, its
// name in some of them with folders and before the id. A file of six objects or more that
// has_every_kind has some of each and, if the route has track of its own, a dynamic track and a
// broken one.
World Invent_World(const Route_Track& route, std::int64_t objects, bool has_every_kind,
                   Random_Source random);

// A file in the form that the program cannot read.
std::string Binary_World(Random_Source random);

}  // namespace rivelt::sample
