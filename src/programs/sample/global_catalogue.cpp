#include "programs/sample/global_catalogue.h"

#include <array>
#include <cstddef>

#include "programs/sample/text_file.h"
#include "text/primitives.h"

namespace rivelt::sample {
namespace {

constexpr Long Section_Count = 200;

constexpr std::size_t Families = 5;
constexpr std::size_t Widths = 4;  // tracks side by side
constexpr std::array Lengths = {100, 10, 50, 25, 5, 20, 250, 500, 1, 2, 4, 8, 200, 15, 40};
constexpr std::array Radii = {500, 250, 1000, 750, 2000};
constexpr std::array Curves = {10, 5, 20};
constexpr std::array Angles = {10, 5, 15, 20, 30, 45, 60, 8};
constexpr std::size_t Names_In_A_Series = Families * Widths * Lengths.size();

Text Size_Part(std::size_t family, std::size_t size) {
  const Text angle = Joined(Angles[size / 2], u"d");
  const Text_View side = size % 2 == 0 ? u"Lft" : u"Rgt";
  switch (family) {
    case 0:
      return Joined(Lengths[size], u"mStrt");
    case 1:
      return Joined(Radii[size / Curves.size()], u"r", Curves[size % Curves.size()], u"d");
    case 2:
      return Joined(u"Pnt", angle, side);
    case 3:
      return Joined(angle, u"Yard", side);
    default:
      return Joined(u"Xover", angle, side);
  }
}

// Unlike the name of every other index.
Text Name_Of(std::size_t index) {
  const std::size_t series = index / Names_In_A_Series;
  const std::size_t in_series = index % Names_In_A_Series;
  return Joined(series == 0 ? Text() : Joined(u"Qb", series, u"_"), u"A",
                in_series / Families % Widths + 1, u"t",
                Size_Part(in_series % Families, in_series / (Families * Widths)), u".s");
}

void Add_Section(Text& lines, Long id, Random_Source& random) {
  Line(lines, 1, u"TrackSection ( ", id);
  Line(lines, 2, u"SectionSize ( 1.5 ", random.Decimal(10, 5000, 10), u" )");
  if (id % 3 == 2) {
    const auto radius = random.Between(2, 40) * 50;
    Line(lines, 2, u"SectionCurve ( ", radius, u" ", random.Decimal(-60, 60, 2), u" )");
  }
  Line(lines, 1, u")");
}

void Add_Name(Text& lines, const Shape& shape) {
  const Text_View quote = shape.Id % 30 == 13 ? u"\"" : u"";
  Line(lines, 2, u"FileName ( ", quote, shape.File_Name, quote, u" )");
}

void Add_Shape(Text& lines, const Shape& shape, Random_Source& random) {
  const bool name_comes_late = shape.Kind == Shape::Record::Name_Comes_Late;
  Line(lines, 1, u"TrackShape ( ", shape.Id);
  if (!name_comes_late) Add_Name(lines, shape);
  Line(lines, 2, u"NumPaths ( ", shape.Sections().size(), u" )");
  for (const Long section : shape.Sections()) {
    const auto across = random.Decimal(-50, 50, 2);
    Line(lines, 2, u"SectionIdx ( 1 ", across, u" 0 0 0 ", section, u" )");
  }
  if (name_comes_late) Add_Name(lines, shape);
  Line(lines, 1, u")");
}

void Add_Comments(Text& lines, Long id) {
  if (id % 100 == 50) Line(lines, 1, u"_INFO ( checked ( twice ) up to ", id, u" )");
  if (id % 100 == 75) Line(lines, 1, u"_SKIP ( TrackShape ( 0 FileName ( Planned.s ) ) )");
}

}  // namespace

std::vector<Long> Shape::Sections() const {
  const Long first = Id * 7 % Section_Count;
  if (Is_Junction() || Id % 3 == 0) return {first, (first + 31) % Section_Count};
  return {first};
}

std::vector<Shape> Invent_Shapes(Long count) {
  std::vector<Shape> shapes;
  for (Long id = 1; id <= count; ++id) {
    const std::size_t index = shapes.size();
    Shape shape{id, Name_Of(index), Shape::Record::Plain};
    if (id % 30 == 7) shape.Kind = Shape::Record::Name_Comes_Late;
    if (id == 104 || id == 105 || id % 60 == 10) {
      shape.Kind = Shape::Record::Duplicate;
      shape.File_Name = Upper_Text(shapes[index - 2].File_Name);
    }
    shapes.push_back(shape);
  }
  return shapes;
}

Long Reserved_Count(const std::vector<Shape>& shapes) {
  constexpr Long usual = 40000;
  return static_cast<Long>(shapes.size()) / usual * usual + usual;
}

Text Global_Catalogue(const std::vector<Shape>& shapes, Random_Source random) {
  Text lines = File_Start(u"F0t");
  Line(lines, 0, u"_INFO ( Build 00012 )");
  Line(lines, 0, u"_SKIP (");
  Line(lines, 1, u"Ids from TrackSections ( 40000 ) on belong to the routes");
  Line(lines, 1, u"Ids of TrackShapes ( 1 2 3 ) stay for good");
  Line(lines, 0, u")");
  Line(lines, 0, u"TrackSections ( ", Reserved_Count(shapes));
  for (Long id = 0; id < Section_Count; ++id) Add_Section(lines, id, random);
  Line(lines, 0, u")");
  Line(lines, 0, u"TrackShapes ( ", Reserved_Count(shapes));
  for (const Shape& shape : shapes) {
    Add_Comments(lines, shape.Id);
    Add_Shape(lines, shape, random);
  }
  Line(lines, 0, u")");
  return lines;
}

}  // namespace rivelt::sample
