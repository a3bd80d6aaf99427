#include "sample/text_file.h"
#include "sample/track.h"

namespace rivelt::sample {
namespace {

enum class Object_Kind {
  Right,
  Wrong_Id,
  Unknown_Shape,  // that is not in the catalogue
  Unlisted_Shape,
  Own_Shape,  // of the route's dynamic track
  Name_With_Folders,
  Name_Before_Id,  // with folders as well
};

class World_Writer {
 public:
  World_Writer(const Route_Track& route, Random_Source source) : Route(route), Random(source) {}

  World Run(std::int64_t objects, bool has_every_kind) {
    if (has_every_kind) objects -= Add_One_Of_Each();
    while (objects-- > 0) {
      const Object_Kind kind = Drawn_Kind();
      Add_Track_Object(kind, Drawn_Shape(kind));
      if (Random.One_In(4)) Add_Scenery();
      if (!Route.Own.empty() && Random.One_In(150)) Add_Dynamic_Track(false);
    }
    return {File_Text(u"w0t", Records + u" )"), Track};
  }

 private:
  // The shapes at the front of the catalogue are the ones that a guide to the program can name.
  std::int64_t Add_One_Of_Each() {
    using enum Object_Kind;
    static constexpr std::array kinds = {
        Right, Wrong_Id, Right, Unknown_Shape, Name_With_Folders, Name_Before_Id, Unlisted_Shape};
    for (std::size_t i = 0; i < kinds.size(); ++i) Add_Track_Object(kinds[i], Route.Shapes[i]);
    if (!Route.Own.empty()) {
      Add_Track_Object(Own_Shape, Route.Shapes.front());
      Add_Dynamic_Track(false);
      Add_Dynamic_Track(true);
    }
    return kinds.size();
  }

  Object_Kind Drawn_Kind() {
    using enum Object_Kind;
    static constexpr std::array rare = {Unknown_Shape, Unlisted_Shape, Name_With_Folders,
                                        Name_Before_Id};
    const std::int64_t draw = Random.Below(200);
    if (draw < 5) return Wrong_Id;
    if (draw < 10) return Route.Own.empty() ? Right : Own_Shape;
    return draw < 14 ? rare[static_cast<std::size_t>(draw - 10)] : Right;
  }

  // The next one of the wanted sort after the draw. A few shapes make up most of a route.
  const Shape& Drawn_Shape(Object_Kind kind) {
    using enum Shape::Record;
    const auto most = Random.Below(static_cast<std::int64_t>(Route.Shapes.size())) + 1;
    const auto draw = static_cast<std::size_t>(Random.Below(most));
    const auto wanted = kind == Object_Kind::Unlisted_Shape ? Name_Comes_Late : Plain;
    for (std::size_t i = 0; i < Route.Shapes.size(); ++i) {
      const Shape& shape = Route.Shapes[(draw + i) % Route.Shapes.size()];
      if (shape.Kind == wanted) return shape;
    }
    return Route.Shapes.front();
  }

  void Add_Track_Object(Object_Kind kind, const Shape& shape) {
    Placed_Track placed{0, shape.Id, shape.Sections, shape.Is_Junction(), Place()};
    if (kind == Object_Kind::Own_Shape) {
      const Dynamic_Track& own = Random.One_Of(Route.Own);
      placed = {0, own.Shape_Id, own.Section_Ids, false, placed.Place};
    }
    const Text name = Joined(u" FileName ( ", Name_Of(kind, shape, placed.Shape_Id), u" )");
    const auto wrong_by = kind == Object_Kind::Wrong_Id ? Random.Between(1, 40) : 0;
    placed.Uid = Begin_Object(u"TrackObj");
    if (kind == Object_Kind::Name_Before_Id) Records += name;
    Add(Records, u"SectionIdx (", placed.Shape_Id + wrong_by, u")");
    if (placed.Is_Junction) Add(Records, u"JNodePosn ( -5354 14850", placed.Place, u")");
    Add(Records, u"Elevation (", Elevation(), u") CollideFlags ( 519 )");
    if (kind != Object_Kind::Name_Before_Id) Records += name;
    End_Object(u"00200180", placed.Place);
    Track.push_back(placed);
  }

  Text Name_Of(Object_Kind kind, const Shape& shape, Long id) {
    using enum Object_Kind;
    if (kind == Own_Shape) return Joined(u"DynaTrax-", id, u".s");
    if (kind == Name_With_Folders || kind == Name_Before_Id) {
      return Joined(u"\"..\\\\..\\\\routes\\\\", Route.Folder, u"\\\\shapes\\\\", shape.File_Name,
                    u"\"");
    }
    if (kind != Unknown_Shape) return shape.File_Name;
    const auto width = Random.Between(1, 4);  // no two draws in one call: it has no order
    return Joined(u"My", width, u"t", Random.Between(1, 50) * 5, u"mTrestle.s");
  }

  double Elevation() {
    if (Random.One_In(20)) return 2.34185e-38;
    return Random.One_In(5) ? Random.Decimal(-150, 150, 10000) : 0;
  }

  void Add_Scenery() {
    static constexpr std::array<Text_View, 4> names = {u"GoodsShed.s", u"WaterTower2.s",
                                                       u"\"Signal Cabin.s\"", u"Oak_Large.s"};
    Begin_Object(u"Static");
    Add(Records, u"FileName (", Random.One_Of(names), u")");
    End_Object(u"00100000", Place());
  }

  // An editor leaves a broken one: in no database, with a section 0 and a shape that cannot be.
  void Add_Dynamic_Track(bool is_broken) {
    Dynamic_Track track = Random.One_Of(Route.Own);
    Placed_Track placed{0, track.Shape_Id, track.Section_Ids, false, Place()};
    if (is_broken) track.Sections[0] = u"0 0.064127 0";
    placed.Uid = Begin_Object(u"Dyntrack");
    Add(Records, u"TrackSections (");
    for (std::size_t place = 0; place < track.Sections.size(); ++place) {
      const Text& used = track.Sections[place];
      Add(Records, u"TrackSection ( SectionCurve (", place % 2, u")",
          used.empty() ? u"4294967295 0 0" : used, u")");
    }
    Add(Records, u") SectionIdx (", is_broken ? -2147483648 : track.Shape_Id,
        u") Elevation ( 0 ) CollideFlags ( 39 )");
    End_Object(u"00100000", placed.Place);
    if (!is_broken) Track.push_back(placed);
  }

  std::int64_t Begin_Object(Text_View keyword) {
    Add(Records, keyword, u"( UiD (", ++Last_Uid, u")");
    return Last_Uid;
  }

  void End_Object(Text_View flags, Text_View place) {
    static constexpr std::array<Text_View, 4> directions = {u"0 0 0 1", u"0 0.6 0 0.8",
                                                            u"0 -0.28 0 0.96", u"0 0.96 0 -0.28"};
    Add(Records, u"StaticFlags (", flags, u") Position (", place, u") QDirection (",
        Random.One_Of(directions), u") VDbId ( 4294967294 ) StaticDetailLevel ( 2 ) )");
  }

  Text Place() {
    const auto across = Random.Decimal(-10240, 10240, 10);
    const auto height = Random.Decimal(0, 2000, 10);
    return Joined(across, u" ", height, u" ", Random.Decimal(-10240, 10240, 10));
  }

  const Route_Track& Route;
  Random_Source Random;
  Text Records = u" Tr_Worldfile ( Tr_Watermark ( 2 )";
  std::vector<Placed_Track> Track;
  std::int64_t Last_Uid = 0;
};

}  // namespace

World Invent_World(const Route_Track& route, std::int64_t objects, bool has_every_kind,
                   Random_Source random) {
  return World_Writer(route, random).Run(objects, has_every_kind);
}

}  // namespace rivelt::sample
