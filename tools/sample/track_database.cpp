#include "sample/text_file.h"
#include "sample/track.h"

namespace rivelt::sample {

void Track_Database::Add_Tile(std::int64_t x, std::int64_t z,
                              const std::vector<Placed_Track>& track) {
  Tile = Joined(x, u" ", z);
  Add_Buffer(track.front(), Count + 2);
  std::int64_t from = Count;
  std::vector<Text> sections;
  for (const Placed_Track& piece : track) {
    if (piece.Is_Junction && !sections.empty()) {
      Add_Vector(sections, from, Count + 2);
      from = Count + 1;
      Add_Branch(piece);
      sections.clear();
    }
    for (const Long id : piece.Sections) {
      sections.push_back(Section(id, piece));
      if (piece.Is_Junction) break;  // the other path is the branch
    }
  }
  Add_Vector(sections, from, Count + 2);
  Add_Buffer(track.back(), Count);
}

void Track_Database::Add_Buffer(const Placed_Track& piece, std::int64_t neighbour) {
  ++Count;
  Add(Nodes, u"TrackNode (", Count, u"TrEndNode ( 0 ) UiD (", Tile, piece.Uid, 0, Tile, piece.Place,
      u"0 0 0 ) TrPins ( 1 0 TrPin (", neighbour, neighbour > Count, u") ) )");
}

void Track_Database::Add_Vector(const std::vector<Text>& sections, std::int64_t from,
                                std::int64_t to) {
  Add(Nodes, u"TrackNode (", ++Count, u"TrVectorNode ( TrVectorSections (", sections.size());
  for (const Text& section : sections) Add(Nodes, section);
  Add(Nodes, u") ) TrPins ( 1 1 TrPin (", from, u"0 ) TrPin (", to, u"1 ) ) )");
}

// The junction, its branch and the buffer there. The line goes on with the node after these.
void Track_Database::Add_Branch(const Placed_Track& piece) {
  const std::int64_t junction = ++Count;
  Add(Nodes, u"TrackNode (", junction, u"TrJunctionNode ( 0", piece.Shape_Id, u"0 ) UiD (", Tile,
      piece.Uid, 0, Tile, piece.Place, u"0 0 0 ) TrPins ( 1 2 TrPin (", junction - 1,
      u"0 ) TrPin (", junction + 1, u"1 ) TrPin (", junction + 3, u"1 ) ) )");
  Add_Vector({Section(piece.Sections.back(), piece)}, junction, junction + 2);
  Add_Buffer(piece, junction + 1);
}

Text Track_Database::Section(Long id, const Placed_Track& piece) const {
  return Joined(id, u" ", piece.Shape_Id, u" ", Tile, u" ", piece.Uid, u" 2 0 00 ", Tile, u" ",
                piece.Place, u" -0.009 4.273 0");
}

Text Track_Database::File() const {
  return File_Text(
      u"T0t", Joined(u" TrackDB ( Serial ( ", Count + 1, u" ) TrackNodes ( ", Count, Nodes,
                     u" ) TrItemTable ( 1 PlatformItem ( TrItemId ( 0 ) TrItemSData ( 12.5 00000002"
                     u" ) PlatformName ( \"Upper Platform\" ) ) ) )"));
}

}  // namespace rivelt::sample
