#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "programs/sample/world_file.h"
#include "text/text.h"

namespace rivelt::sample {

// The text of a .tdb or .rdb: how the track of the world files hangs together. The track of each
// tile is a line of its own, on which every junction branches off to a buffer.
class Track_Database {
 public:
  void Add_Tile(std::int64_t x, std::int64_t z, const std::vector<Placed_Track>& track);

  Text Whole() const;

 private:
  // The sections between two nodes.
  struct Vector {
    Text Entries;
    std::int64_t Count = 0;
  };

  void Add_Section(Vector& vector, Long section, const Placed_Track& piece) const;
  void Add_Buffer(const Placed_Track& piece, std::int64_t neighbour);
  void Add_Vector(const Vector& vector, std::int64_t from, std::int64_t to);
  void Add_Branch(const Placed_Track& piece);
  void Add_Uid(const Placed_Track& piece);
  void Add_Pins(Text_View counts, std::initializer_list<std::int64_t> neighbours);

  Text Tile;  // the two numbers of the tile that is being added
  Text Nodes;
  std::int64_t Count = 0;
};

}  // namespace rivelt::sample
