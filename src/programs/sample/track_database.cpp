#include "programs/sample/track_database.h"

#include "programs/sample/text_file.h"

namespace rivelt::sample {

void Track_Database::Add_Tile(std::int64_t x, std::int64_t z,
                              const std::vector<Placed_Track>& track) {
  Tile = Joined(x, u" ", z);
  Add_Buffer(track.front(), Count + 2);
  std::int64_t from = Count;
  Vector vector;
  for (const Placed_Track& piece : track) {
    if (piece.Is_Junction && vector.Count > 0) {
      Add_Vector(vector, from, Count + 2);
      from = Count + 1;
      Add_Branch(piece);
      vector = {};
    }
    for (const Long section : piece.Sections) {
      Add_Section(vector, section, piece);
      if (piece.Is_Junction) break;  // the other path is the branch
    }
  }
  Add_Vector(vector, from, Count + 2);
  Add_Buffer(track.back(), Count);
}

void Track_Database::Add_Section(Vector& vector, Long section, const Placed_Track& piece) const {
  vector.Entries += Joined(u" ", section, u" ", piece.Shape_Id, u" ", Tile, u" ", piece.Uid,
                           u" 2 0 00 ", Tile, u" ", piece.Place, u" -0.009 4.273 0");
  ++vector.Count;
}

void Track_Database::Add_Buffer(const Placed_Track& piece, std::int64_t neighbour) {
  Line(Nodes, 2, u"TrackNode ( ", ++Count);
  Line(Nodes, 3, u"TrEndNode ( 0 )");
  Add_Uid(piece);
  Add_Pins(u"1 0", {neighbour});
}

void Track_Database::Add_Vector(const Vector& vector, std::int64_t from, std::int64_t to) {
  Line(Nodes, 2, u"TrackNode ( ", ++Count);
  Line(Nodes, 3, u"TrVectorNode (");
  Line(Nodes, 4, u"TrVectorSections ( ", vector.Count, vector.Entries, u" )");
  Line(Nodes, 3, u")");
  Add_Pins(u"1 1", {from, to});
}

// The junction, its branch and the buffer there. The line goes on with the node after these.
void Track_Database::Add_Branch(const Placed_Track& piece) {
  const std::int64_t junction = ++Count;
  Line(Nodes, 2, u"TrackNode ( ", junction);
  Line(Nodes, 3, u"TrJunctionNode ( 0 ", piece.Shape_Id, u" 0 )");
  Add_Uid(piece);
  Add_Pins(u"1 2", {junction - 1, junction + 1, junction + 3});
  Vector branch;
  Add_Section(branch, piece.Sections.back(), piece);
  Add_Vector(branch, junction, junction + 2);
  Add_Buffer(piece, junction + 1);
}

void Track_Database::Add_Uid(const Placed_Track& piece) {
  Line(Nodes, 3, u"UiD ( ", Tile, u" ", piece.Uid, u" 0 ", Tile, u" ", piece.Place, u" 0 0 0 )");
}

// A pin tells which end of the neighbour it leads to.
void Track_Database::Add_Pins(Text_View counts, std::initializer_list<std::int64_t> neighbours) {
  Line(Nodes, 3, u"TrPins ( ", counts);
  for (const std::int64_t neighbour : neighbours) {
    Line(Nodes, 4, u"TrPin ( ", neighbour, neighbour > Count ? u" 1 )" : u" 0 )");
  }
  Line(Nodes, 3, u")");
  Line(Nodes, 2, u")");
}

Text Track_Database::Whole() const {
  Text lines = File_Start(u"T0t");
  Line(lines, 0, u"TrackDB (");
  Line(lines, 1, u"Serial ( ", Count + 1, u" )");
  Line(lines, 1, u"TrackNodes ( ", Count);
  lines += Nodes;
  Line(lines, 1, u")");
  Line(lines, 1, u"TrItemTable ( 1");
  Line(lines, 2, u"PlatformItem (");
  Line(lines, 3, u"TrItemId ( 0 )");
  Line(lines, 3, u"TrItemSData ( 12.5 00000002 )");
  Line(lines, 3, u"PlatformName ( \"Upper Platform\" )");
  Line(lines, 2, u")");
  Line(lines, 1, u")");
  Line(lines, 0, u")");
  return lines;
}

}  // namespace rivelt::sample
