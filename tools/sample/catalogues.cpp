#include "sample/text_file.h"
#include "sample/track.h"
#include "text/primitives.h"

namespace rivelt::sample {
namespace {

constexpr Long Section_Count = 200;

// Unlike the name of every other index.
Text Name_Of(std::size_t index) {
  static constexpr std::array lengths = {100, 10, 50, 25, 5, 20, 250, 500, 1, 2, 4, 8, 200, 15, 40};
  static constexpr std::array radii = {500, 250, 1000, 750, 2000};
  static constexpr std::array curves = {10, 5, 20};
  static constexpr std::array angles = {10, 5, 15, 20, 30, 45, 60, 8};
  static constexpr std::array<Text_View, 3> junctions = {u"Pnt", u"Yard", u"Xover"};
  constexpr std::size_t widths = 4;  // tracks side by side
  const std::size_t kind = index % 5;
  const std::size_t size = index / 5 / widths % lengths.size();
  const std::size_t series = index / 5 / widths / lengths.size();
  Text name = series == 0 ? u"" : Joined(u"Qb", series, u"_");
  name += Joined(u"A", index / 5 % widths + 1, u"t");
  if (kind == 0) return Joined(name, lengths[size], u"mStrt.s");
  if (kind == 1) return Joined(name, radii[size / 3], u"r", curves[size % 3], u"d.s");
  return Joined(name, junctions[kind - 2], angles[size / 2], size % 2 == 0 ? u"dLft.s" : u"dRgt.s");
}

void Add_Section(Text& records, Long id, Random_Source& random) {
  Add(records, u"TrackSection (", id, u"SectionSize ( 1.5", random.Decimal(10, 5000, 10), u")");
  if (id % 3 == 2) {
    const auto radius = random.Between(2, 40) * 50;
    Add(records, u"SectionCurve (", radius, random.Decimal(-60, 60, 2), u")");
  }
  Add(records, u")");
}

void Add_Shape(Text& records, const Shape& shape) {
  if (shape.Id % 100 == 50) Add(records, u"_INFO ( checked ( twice ) up to", shape.Id, u")");
  if (shape.Id % 100 == 75) Add(records, u"_SKIP ( TrackShape ( 0 FileName ( Planned.s ) ) )");
  const Text_View quote = shape.Id % 30 == 13 ? u"\"" : u"";
  const Text name = Joined(u" FileName ( ", quote, shape.File_Name, quote, u" )");
  Text paths = Joined(u" NumPaths ( ", shape.Sections.size(), u" )");
  for (const Long id : shape.Sections) Add(paths, u"SectionIdx ( 1 -2.5 0 0 0", id, u")");
  const bool name_comes_late = shape.Kind == Shape::Record::Name_Comes_Late;
  Add(records, u"TrackShape (", shape.Id);
  records += (name_comes_late ? paths + name : name + paths) + u" )";
}

Text Invented_Size(std::size_t place, Random_Source& random) {
  if (place % 2 == 0) return Joined(random.Decimal(200, 40000, 100), u" 0");
  const auto angle = random.Decimal(-900000, 900000, 1000000);
  return Joined(angle, u" ", random.Decimal(500, 30000, 10));
}

}  // namespace

std::vector<Shape> Invent_Shapes(Long count) {
  std::vector<Shape> shapes;
  for (Long id = 1; id <= count; ++id) {
    const Long section = id * 7 % Section_Count;
    Shape shape{id, Name_Of(shapes.size()), {section}};
    // The points of a single track.
    if (id % 20 == 3) shape.Sections.push_back((section + 31) % Section_Count);
    if (id % 30 == 7) shape.Kind = Shape::Record::Name_Comes_Late;
    if (id == 104 || id == 105 || id % 60 == 10) {
      shape.Kind = Shape::Record::Duplicate;
      shape.File_Name = Upper_Text(shapes[shapes.size() - 2].File_Name);
    }
    shapes.push_back(shape);
  }
  return shapes;
}

Long Reserved_Count(const std::vector<Shape>& shapes) {
  return (static_cast<Long>(shapes.size()) / 40000 + 1) * 40000;
}

Text Global_Catalogue(const std::vector<Shape>& shapes, Random_Source random) {
  Text records =
      u" _INFO ( Build 00012 )"
      u" _SKIP ( Ids from TrackSections ( 40000 ) on belong to the routes"
      u" Ids of TrackShapes ( 1 2 3 ) stay for good )";
  Add(records, u"TrackSections (", Reserved_Count(shapes));
  for (Long id = 0; id < Section_Count; ++id) Add_Section(records, id, random);
  Add(records, u") TrackShapes (", Reserved_Count(shapes));
  for (const Shape& shape : shapes) Add_Shape(records, shape);
  return File_Text(u"F0t", records + u" )");
}

std::vector<Dynamic_Track> Invent_Dynamic_Tracks(std::size_t count, Long first_section,
                                                 Long first_shape, Random_Source random) {
  std::vector<Dynamic_Track> tracks(count);
  for (Dynamic_Track& track : tracks) {
    track.Shape_Id = first_shape++;
    const auto always_used = static_cast<std::size_t>(random.Below(5));
    for (std::size_t place = 0; place < track.Sections.size(); ++place) {
      if (place != always_used && !random.One_In(3)) continue;
      track.Sections[place] = Joined(first_section, u" ", Invented_Size(place, random));
      track.Section_Ids.push_back(first_section++);
    }
  }
  return tracks;
}

Text Local_Catalogue(const std::vector<Dynamic_Track>& tracks) {
  Text sections;
  Text paths;
  std::size_t count = 0;
  for (const Dynamic_Track& track : tracks) {
    count += track.Section_Ids.size();
    for (std::size_t place = 0; place < track.Sections.size(); ++place) {
      const Text& used = track.Sections[place];
      if (used.empty()) continue;
      Add(sections, u"TrackSection ( SectionCurve (", place % 2, u")", used, u")");
    }
    Add(paths, u"TrackPath (", track.Shape_Id, track.Section_Ids.size());
    for (const Long id : track.Section_Ids) Add(paths, id);
    Add(paths, u")");
  }
  return File_Text(u"T0t", Joined(u" TrackSections ( ", count, sections, u" ) SectionIdx ( ",
                                  tracks.size(), paths, u" )"));
}

}  // namespace rivelt::sample
