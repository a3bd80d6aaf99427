#include "programs/sample/shape.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "programs/sample/text_lines.h"
#include "text/primitives.h"

namespace rivelt::sample {
namespace {

constexpr std::size_t Families = 5;
constexpr std::size_t Widths = 4;  // tracks side by side
constexpr std::size_t Sizes = 15;  // in each family
constexpr std::size_t Names_In_A_Series = Families * Widths * Sizes;

constexpr std::array<int, Sizes> Lengths = {100, 10, 50, 25, 5,   20, 250, 500,
                                            1,   2,  4,  8,  200, 15, 40};
constexpr std::array<int, 5> Radii = {500, 250, 1000, 750, 2000};
constexpr std::array<int, 3> Curves = {10, 5, 20};
constexpr std::array<int, 8> Angles = {10, 5, 15, 20, 30, 45, 60, 8};

Text Size_Part(std::size_t family, std::size_t size) {
  const Text angle = Whole_Number(Angles[size / 2]) + u"d";
  const Text_View side = size % 2 == 0 ? u"Lft" : u"Rgt";
  switch (family) {
    case 0:
      return Whole_Number(Lengths[size]) + u"mStrt";
    case 1:
      return Concatenate({Whole_Number(Radii[size / Curves.size()]), u"r",
                          Whole_Number(Curves[size % Curves.size()]), u"d"});
    case 2:
      return Concatenate({u"Pnt", angle, side});
    case 3:
      return Concatenate({angle, u"Yard", side});
    default:
      return Concatenate({u"Xover", angle, side});
  }
}

// Unlike the name of every other index.
Text Name_Of(std::size_t index) {
  const auto series = static_cast<std::int64_t>(index / Names_In_A_Series);
  const std::size_t in_series = index % Names_In_A_Series;
  const auto width = static_cast<std::int64_t>(in_series / Families % Widths + 1);
  return Concatenate({series == 0 ? Text() : Concatenate({u"Qb", Whole_Number(series), u"_"}), u"A",
                      Whole_Number(width), u"t",
                      Size_Part(in_series % Families, in_series / (Families * Widths)), u".s"});
}

}  // namespace

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

}  // namespace rivelt::sample
