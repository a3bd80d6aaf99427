#include "programs/sample/world_file.h"

#include <array>
#include <cstddef>

#include "programs/sample/text_lines.h"
#include "text/primitives.h"

namespace rivelt::sample {
namespace {

enum class Object_Kind { Right, Wrong_Id, Unknown_Shape, Unlisted_Shape };

class World_Writer {
 public:
  World_Writer(const std::vector<Shape>& all_shapes, const std::vector<Dynamic_Track>& tracks,
               Random_Source source)
      : Shapes(all_shapes), Tracks(tracks), Random(source) {}

  Text Run(std::int64_t objects, bool has_every_kind) {
    Lines.Line(0, {u"Tr_Worldfile ("});
    Lines.Line(1, {u"Tr_Watermark ( 2 )"});
    if (has_every_kind) objects -= Add_One_Of_Each();
    for (std::int64_t i = 0; i < objects; ++i) {
      const Object_Kind kind = Drawn_Kind();
      Add_Track_Object(kind, Drawn_Shape(kind));
      if (Random.One_In(4)) Add_Scenery();
      if (!Tracks.empty() && Random.One_In(150)) Add_Dynamic_Track();
    }
    Lines.Line(0, {u")"});
    return Lines.Whole();
  }

 private:
  // The shapes at the front of the catalogue are the ones that a guide to the program can name.
  std::int64_t Add_One_Of_Each() {
    Add_Track_Object(Object_Kind::Right, Shapes.front());
    Add_Track_Object(Object_Kind::Wrong_Id, Shapes[1]);
    Add_Track_Object(Object_Kind::Right, Shapes[2]);
    Add_Track_Object(Object_Kind::Unknown_Shape, Shapes[3]);
    if (!Tracks.empty()) Add_Dynamic_Track();
    return 4;
  }

  Object_Kind Drawn_Kind() {
    const std::int64_t draw = Random.Below(200);
    if (draw < 5) return Object_Kind::Wrong_Id;
    if (draw == 5) return Object_Kind::Unknown_Shape;
    return draw == 6 ? Object_Kind::Unlisted_Shape : Object_Kind::Right;
  }

  // Without a shape of the wanted sort in the neighbourhood of the draw, the one next best.
  const Shape& Drawn_Shape(Object_Kind kind) {
    // A few shapes make up most of a route.
    const std::int64_t most = Random.Below(static_cast<std::int64_t>(Shapes.size())) + 1;
    const auto draw = static_cast<std::size_t>(Random.Below(most));
    const bool listed = kind != Object_Kind::Unlisted_Shape;
    for (std::size_t i = 0; i < Shapes.size(); ++i) {
      const Shape& shape = Shapes[(draw + i) % Shapes.size()];
      if (shape.Kind == Shape::Record::Duplicate) continue;
      if (shape.Is_Listed() == listed) return shape;
    }
    return Shapes.front();
  }

  void Add_Track_Object(Object_Kind kind, const Shape& shape) {
    const Long id = kind == Object_Kind::Wrong_Id ? shape.Id + Wrong_By() : shape.Id;
    Begin_Object(u"TrackObj (");
    Lines.Line(2, {u"SectionIdx ( ", Whole_Number(id), u" )"});
    if (shape.Id % 20 == 3) Add_Junction_Position();
    Lines.Line(
        2, {u"Elevation ( ", Decimal(Random.One_In(5) ? Random.Between(-150, 150) : 0, 4), u" )"});
    Lines.Line(2, {u"CollideFlags ( 519 )"});
    Lines.Line(2, {u"FileName ( ",
                   kind == Object_Kind::Unknown_Shape ? Unknown_Name() : shape.File_Name, u" )"});
    End_Object(u"00200180");
  }

  Long Wrong_By() { return static_cast<Long>(Random.Between(1, 40)); }

  // A shape of somebody's own, which the catalogue has never listed.
  Text Unknown_Name() {
    return Concatenate({u"My", Whole_Number(Random.Between(1, 4)), u"t",
                        Whole_Number(Random.Between(1, 50) * 5), u"mTrestle.s"});
  }

  void Add_Junction_Position() { Lines.Line(2, {u"JNodePosn ( -5354 14850 ", Place(), u" )"}); }

  void Add_Scenery() {
    static constexpr std::array<Text_View, 4> names = {u"GoodsShed.s", u"WaterTower2.s",
                                                       u"\"Signal Cabin.s\"", u"Oak_Large.s"};
    Begin_Object(u"Static (");
    Lines.Line(2, {u"FileName ( ", names[static_cast<std::size_t>(Random.Below(4))], u" )"});
    End_Object(u"00100000");
  }

  void Add_Dynamic_Track() {
    const std::int64_t count = static_cast<std::int64_t>(Tracks.size());
    const Dynamic_Track& track = Tracks[static_cast<std::size_t>(Random.Below(count))];
    Begin_Object(u"Dyntrack (");
    Lines.Line(2, {u"TrackSections ("});
    for (std::size_t place = 0; place < track.Sections.size(); ++place) {
      const Dynamic_Section& section = track.Sections[place];
      Lines.Line(3, {u"TrackSection ("});
      Lines.Line(4, {u"SectionCurve ( ", Curve_Mark(place), u" ) ",
                     section.Id == 0 ? Text(u"4294967295 0 0")
                                     : Whole_Number(section.Id) + u" " + section.Size});
      Lines.Line(3, {u")"});
    }
    Lines.Line(2, {u")"});
    Lines.Line(2, {u"SectionIdx ( ", Whole_Number(track.Shape_Id), u" )"});
    Lines.Line(2, {u"Elevation ( 0 )"});
    Lines.Line(2, {u"CollideFlags ( 39 )"});
    End_Object(u"00100000");
  }

  void Begin_Object(Text_View opening) {
    Lines.Line(1, {opening});
    Lines.Line(2, {u"UiD ( ", Whole_Number(++Last_Uid), u" )"});
  }

  void End_Object(Text_View flags) {
    Lines.Line(2, {u"StaticFlags ( ", flags, u" )"});
    Lines.Line(2, {u"Position ( ", Place(), u" )"});
    Lines.Line(2, {u"QDirection ( ", Direction(), u" )"});
    Lines.Line(2, {u"VDbId ( 4294967294 )"});
    Lines.Line(2, {u"StaticDetailLevel ( 2 )"});
    Lines.Line(1, {u")"});
  }

  Text Place() {
    return Concatenate({Decimal(Random.Between(-10240, 10240), 1), u" ",
                        Decimal(Random.Between(0, 2000), 1), u" ",
                        Decimal(Random.Between(-10240, 10240), 1)});
  }

  // The sine and cosine of an angle by its half-angle tangent, in whole numbers, so that they come
  // out alike on every system.
  Text Direction() {
    const std::int64_t tangent = Random.Between(-1000, 1000);
    const std::int64_t square = tangent * tangent;
    const std::int64_t one = 1000000;
    return Concatenate({u"0 ", Decimal(2 * one * tangent / (one + square), 3), u" 0 ",
                        Decimal(1000 * (one - square) / (one + square), 3)});
  }

  const std::vector<Shape>& Shapes;
  const std::vector<Dynamic_Track>& Tracks;
  Random_Source Random;
  Text_Lines Lines{u"w0t"};
  std::int64_t Last_Uid = 0;
};

}  // namespace

Text World_Text(const std::vector<Shape>& shapes, const std::vector<Dynamic_Track>& tracks,
                std::int64_t objects, bool has_every_kind, Random_Source random) {
  return World_Writer(shapes, tracks, random).Run(objects, has_every_kind);
}

std::string Binary_World(Random_Source random) {
  std::string bytes = "SIMISA@@@@@@@@@@JINX0w0b______\r\n";
  for (int i = 0; i < 4000; ++i) bytes += static_cast<char>(random.Below(256));
  return bytes;
}

}  // namespace rivelt::sample
