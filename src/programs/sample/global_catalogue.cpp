#include "programs/sample/global_catalogue.h"

#include <cstdint>

#include "programs/sample/text_lines.h"

namespace rivelt::sample {
namespace {

class Catalogue_Writer {
 public:
  Catalogue_Writer(const std::vector<Shape>& all_shapes, Random_Source source)
      : Shapes(all_shapes), Random(source) {}

  Text Run() {
    Lines.Line(0, {u"_INFO ( Build 00012 )"});
    Lines.Line(0, {u"_SKIP ("});
    Lines.Line(1, {u"Ids from TrackSections ( 40000 ) on belong to the routes"});
    Lines.Line(1, {u"Ids of TrackShapes ( 1 2 3 ) stay for good"});
    Lines.Line(0, {u")"});
    const Text reserved = Whole_Number(Reserved_Count(Shapes));
    Lines.Line(0, {u"TrackSections ( ", reserved});
    for (std::int64_t id = 0; id < Section_Count(); ++id) Add_Section(id);
    Lines.Line(0, {u")"});
    Lines.Line(0, {u"TrackShapes ( ", reserved});
    for (const Shape& shape : Shapes) Add_Shape(shape);
    Lines.Line(0, {u")"});
    return Lines.Whole();
  }

 private:
  std::int64_t Section_Count() const { return 100 + static_cast<std::int64_t>(Shapes.size()) / 4; }

  void Add_Section(std::int64_t id) {
    Lines.Line(1, {u"TrackSection ( ", Whole_Number(id)});
    Lines.Line(2, {u"SectionSize ( 1.5 ", Decimal(Random.Between(10, 5000), 1), u" )"});
    if (id % 3 == 2) {
      Lines.Line(2, {u"SectionCurve ( ", Whole_Number(Random.Between(2, 40) * 50), u" ",
                     Decimal(Random.Between(-60, 60) * 5, 1), u" )"});
    }
    Lines.Line(1, {u")"});
  }

  void Add_Shape(const Shape& shape) {
    if (shape.Id % 100 == 50) {
      Lines.Line(1, {u"_INFO ( checked ( twice ) up to ", Whole_Number(shape.Id), u" )"});
    }
    if (shape.Id % 100 == 75) Lines.Line(1, {u"_SKIP ( TrackShape ( 0 FileName ( Planned.s ) ) )"});
    Lines.Line(1, {u"TrackShape ( ", Whole_Number(shape.Id)});
    const std::int64_t paths = Random.Between(1, 3);
    if (shape.Kind == Shape::Record::Name_Comes_Late) {
      Add_Paths(paths);
      Add_Name(shape);
    } else {
      Add_Name(shape);
      Add_Paths(paths);
    }
    Lines.Line(1, {u")"});
  }

  void Add_Name(const Shape& shape) {
    const Text_View quote = shape.Id % 30 == 13 ? u"\"" : u"";
    Lines.Line(2, {u"FileName ( ", quote, shape.File_Name, quote, u" )"});
  }

  void Add_Paths(std::int64_t count) {
    Lines.Line(2, {u"NumPaths ( ", Whole_Number(count), u" )"});
    for (std::int64_t i = 0; i < count; ++i) {
      const Text section = Whole_Number(Random.Below(Section_Count()));
      Lines.Line(2, {u"SectionIdx ( 1 ", Decimal(Random.Between(-50, 50) * 5, 1), u" 0 ",
                     Decimal(Random.Below(1000), 1), u" 0 ", section, u" )"});
    }
  }

  const std::vector<Shape>& Shapes;
  Random_Source Random;
  Text_Lines Lines{u"F0t"};
};

}  // namespace

Long Reserved_Count(const std::vector<Shape>& shapes) {
  constexpr Long usual = 40000;
  const Long count = static_cast<Long>(shapes.size());
  return count < usual ? usual : count / usual * usual + usual;
}

Text Global_Catalogue(const std::vector<Shape>& shapes, Random_Source random) {
  return Catalogue_Writer(shapes, random).Run();
}

}  // namespace rivelt::sample
