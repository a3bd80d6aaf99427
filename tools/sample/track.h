// The invented track: the shapes of the global catalogue, a route's own, and the objects in its
// world files.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "sample/random_source.h"
#include "text/text.h"

namespace rivelt::sample {

struct Shape {
  enum class Record {
    Plain,
    Name_Comes_Late,  // after another bracket, so that the name counts for nothing
    Duplicate,        // of an earlier shape, its name in other letter case
  };

  Long Id = 0;
  Text File_Name;
  std::vector<Long> Sections;  // the two paths of a junction, or one
  Record Kind = Record::Plain;

  bool Is_Junction() const { return Sections.size() == 2; }
};

// The first shape is A1t100mStrt.s. Ids count from 1.
std::vector<Shape> Invent_Shapes(Long count);

// The number of track shapes that the catalogue reserves, and of track sections as well.
Long Reserved_Count(const std::vector<Shape>& shapes);

// The text of Global\tsection.dat.
Text Global_Catalogue(const std::vector<Shape>& shapes, Random_Source random);

struct Dynamic_Track {
  Long Shape_Id = 0;
  // Straight and curved by turns: the id and two more numbers, nothing where the place is unused.
  std::array<Text, 5> Sections;
  std::vector<Long> Section_Ids;  // of the places in use: at least one
};

// Tracks whose ids count on from the two given ones.
std::vector<Dynamic_Track> Invent_Dynamic_Tracks(std::size_t count, Long first_section,
                                                 Long first_shape, Random_Source random);

// The text of the local tsection.dat.
Text Local_Catalogue(const std::vector<Dynamic_Track>& tracks);

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

// A world file with so many track objects, most of them with the right id and one in forty with a
// wrong one. One of seven or more that has_every_kind has some of each kind and, if the route has
// track of its own, a dynamic track and a broken one.
World Invent_World(const Route_Track& route, std::int64_t objects, bool has_every_kind,
                   Random_Source random);

// The text of a .tdb or .rdb: how the track of the world files hangs together. The track of each
// tile is a line of its own, on which every junction branches off to a buffer.
class Track_Database {
 public:
  void Add_Tile(std::int64_t x, std::int64_t z, const std::vector<Placed_Track>& track);
  Text File() const;

 private:
  void Add_Buffer(const Placed_Track& piece, std::int64_t neighbour);
  void Add_Vector(const std::vector<Text>& sections, std::int64_t from, std::int64_t to);
  void Add_Branch(const Placed_Track& piece);
  Text Section(Long id, const Placed_Track& piece) const;

  Text Tile;  // the two numbers of the tile that is being added
  Text Nodes;
  std::int64_t Count = 0;
};

}  // namespace rivelt::sample
