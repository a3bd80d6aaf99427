// The passes over what refers to a route's own numbers, and the count of where numbers lead.

#include "convert/whole_route.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "catalogue/catalogue_numbers.h"
#include "convert/count_references.h"
#include "convert/track_database.h"
#include "routes/route_name.h"
#include "sample/track.h"
#include "text/letter_case.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

const Own_Numbers Own{Number_Set({1900, 1901, 2.5, 3e9}), Number_Set({501, 500, 500})};

Long Shape_Id(Text_View name) {
  const std::map<Text, Long> ids{{u"keep.s", 500}, {u"new.s", 7}};
  const auto id = ids.find(Fold_Case(name));
  return id == ids.end() ? -1 : id->second;
}

Passed_World Rebase_World(Text_View text, std::vector<Text>& lines) {
  return Rebase_Own_Shapes(Text(text), Own, 40, Shape_Id,
                           [&](Text_View line) { lines.emplace_back(line); });
}

TEST(Rebase_Own_Shapes, Only_The_Digits_Of_Own_Shapes_Change) {
  const std::pair<Text_View, Text_View> cases[] = {
      // the output if it differs
      {u"( SectionIdx (500) FileName ( DynaTrax-500.s ) )",
       u"( SectionIdx (540) FileName ( DynaTrax-500.s ) )"},
      {u"( FileName (a.s) X ( 1 ) sectionidx\r\n(\t00501 \r\n) )",
       u"( FileName (a.s) X ( 1 ) sectionidx\r\n(\t541 \r\n) )"},
      {u"( SectionIdx ( 500 own ) FileName ( NEW.s ) ( 500 ) )",
       u"( SectionIdx ( 540 own ) FileName ( NEW.s ) ( 500 ) )"},
      {u"( SectionIdx (5e2) FileName (x) SectionIdx (500) )",
       u"( SectionIdx (540) FileName (x) SectionIdx (500) )"},
      {u"( X ( TrackObj ( SectionIdx (501) FileName (x) ) ) )",
       u"( X ( TrackObj ( SectionIdx (541) FileName (x) ) ) )"},
      {u"( SectionIdx (500) FileName (x)", u"( SectionIdx (540) FileName (x)"},  // unbalanced
      {u"( SectionIdx (501) FileName (keep.s) )", u"( SectionIdx (541) FileName (keep.s) )"},
      {u"( SectionIdx (500) FileName (KEEP.s) )", u""},
      {u"( SectionIdx (500) FileName (\" keep.s\") )", u""},
      {u"( SectionIdx (500) FileName (\"..\\\\shapes\\\\keep.s\") )", u""},
      {u"( SectionIdx (1900) FileName (x) )", u""},
      {u"( SectionIdx (500.5) FileName (x) )", u""},
      {u"( SectionIdx ( ) FileName (x) ) Dyntrack ( SectionIdx (500) )", u""},
      {u"( SectionIdx (500) )", u""},
      {u"( SectionIdx (500) FileName (\"a)b\") )", u""},
      {u"( FileName SectionIdx (500) )", u""},
      {u"( FileName (x) )", u""},
  };
  for (const auto& [source, expected] : cases) {
    const Text_View output = expected.empty() ? source : expected;
    std::vector<Text> lines;
    const auto twice = [](Text_View record) {
      return Concatenate({u"( TrackObj ", record, u"\r\n TrackObj ", record, u" )"});
    };
    const Passed_World passed = Rebase_World(twice(source), lines);
    EXPECT_EQ(passed.Output, twice(output)) << To_Utf8(source);
    EXPECT_EQ(passed.Count, expected.empty() ? 0 : 2) << To_Utf8(source);
    const Text line = u" 2 track objects of the route's own shapes";
    EXPECT_EQ(lines, expected.empty() ? std::vector<Text>{} : std::vector{line});
  }
}

TEST(Rebase_Own_Shapes, What_Has_No_End_And_Cannot_Be_Read_Is_Refused) {
  for (const Text_View source :
       {u"TrackObj", u"TrackObj (", u"TrackObj ( SectionIdx", u"TrackObj ( FileName ( x )",
        u"TrackObj ( SectionIdx ( 500 ) FileName ( x", u"TrackObj ( SectionIdx ( 500 ) FileName",
        u"TrackObj ( ) TrackObj (", u"TrackObj ( SectionIdx ( 1e999 ) FileName ( x ) )"}) {
    std::vector<Text> lines;
    EXPECT_THROW(Rebase_World(u"SectionIdx ( 500 ) " + Text(source), lines), Failure)
        << To_Utf8(source);
  }
}

// The fields of a vector section after its two ids.
constexpr Text_View Others =
    u" -5636 15116 380 2 0 00 -5636\t15116 -948.415\r\n1.485 1e-05 0 -1.#IND 500 ";

Text Database(Text_View nodes) {
  return Concatenate({u"SIMISA@@@@@@@@@@JINX0T0t______\r\n\r\nTrackDB (\r\n", nodes, u"\r\n)\r\n"});
}

TEST(Rebase_Track_Database, Only_The_Digits_Of_Own_Numbers_Change) {
  const Text own = Text(u"1901 501") + Text(Others);
  const Text moved = Text(u"2001 541") + Text(Others);
  const Text unknown = Text(u"501 1901") + Text(Others);
  const struct {
    Text Source, Output;  // the output if it differs
    Long Sections, Shapes;
  } cases[] = {
      {u"", u"", 0, 0},
      {u"TrVectorSections ( 0 ) TrVectorSections(0)", u"", 0, 0},
      {u"TrVectorSections ( 1 " + own + u")", u"TrVectorSections ( 1 " + moved + u")", 1, 1},
      {u"a ( trvectorsections\r\n(\t3 " + own + unknown + own + u") ( 1901 ) )",
       u"a ( trvectorsections\r\n(\t3 " + moved + unknown + moved + u") ( 1901 ) )", 2, 2},
      {u"TrVectorSections ( 1 1900 7" + Text(Others) + u")",
       u"TrVectorSections ( 1 2000 7" + Text(Others) + u")", 1, 0},
      {u"TrVectorSections ( 1 _INFO ( 1 ( ) 1900 ) " + own + u"Comment ( ) )",
       u"TrVectorSections ( 1 _INFO ( 1 ( ) 1900 ) " + moved + u"Comment ( ) )", 1, 1},
      {u"TrJunctionNode ( 0 500 0 ) TrJunctionNode ( 500 7 ) UiD ( 500 500 )",
       u"TrJunctionNode ( 0 540 0 ) TrJunctionNode ( 500 7 ) UiD ( 500 500 )", 0, 1},
      {u"Name ( \"TrJunctionNode ( 0 500\" ) Name ( \"TrVectorSections (\" )", u"", 0, 0},
      {u"Name ( \"\\\" ( \\\\\" ) ( \"\" )", u"", 0, 0},
      {u"Name ( 12\" ( \" ) )\r\n ( \" )\r\nTrJunctionNode ( 0 500 ) Name ( \"b\" )",
       u"Name ( 12\" ( \" ) )\r\n ( \" )\r\nTrJunctionNode ( 0 540 ) Name ( \"b\" )", 0, 1},
      {u"_SKIP ( TrJunctionNode ( 0 500 0 ) ) OldTrJunctionNode ( 0 500 0 )", u"", 0, 0},
      {u") ) ( \" )", u"", 0, 0},
  };
  for (const auto& [source, output, sections, shapes] : cases) {
    const Rebased_Database rebased = Rebase_Track_Database(Database(source), Own, 100, 40);
    EXPECT_EQ(rebased.Output, Database(output.empty() ? source : output)) << To_Utf8(source);
    EXPECT_EQ(rebased.Section_Count, sections) << To_Utf8(source);
    EXPECT_EQ(rebased.Shape_Count, shapes) << To_Utf8(source);
  }
}

TEST(Rebase_Track_Database, What_Is_Cut_Or_Not_Of_The_Form_Is_Refused) {
  const Text own = Text(u"1901 501") + Text(Others);
  const Text whole = Database(u"TrVectorSections ( 1 " + own + u") TrJunctionNode ( 0 500 0 )");
  std::vector<Text> refused = {u"SIMISA@F\u0190\u0000\u0011", u"TrackDB", u"TrackDBs ( )",
                               u"\"TrackDB ( )\"", u"_SKIP ( TrackDB ( ) )"};
  for (std::size_t length = 0; length < whole.size() - 2; length += 3) {
    refused.push_back(whole.substr(0, length));
  }
  for (const Text_View sections :
       {u"( )", u"( x )", u"( 0 0 )", u"( 1 )", u"( 2 OWN)", u"( 0 OWN)", u"( 1 0 OWN)",
        u"( 0.0625 1900 )", u"( -1 )", u"( 1e999 )", u"( 1 xOWN)", u"( 1 \"OWN)",
        u"( 1 1900 ( 501 )OTHERS)", u"( 1 1900 \"501\"OTHERS)", u"( 1 1900 501xOTHERS)",
        u"( 1 1900 1e999OTHERS)", u"", u")"}) {
    const Text filled = Replace_Text(Replace_Text(sections, u"OWN", own), u"OTHERS", Others);
    refused.push_back(Database(u"TrVectorSections " + filled));
  }
  for (const Text_View nodes : {u"TrJunctionNode", u"TrJunctionNode 0 500", u"TrJunctionNode ( 0 )",
                                u"TrJunctionNode ( 0 x 0 )", u"TrJunctionNode ( 0 ( 500 ) )",
                                u"TrJunctionNode ( 0 \"500\" )", u"(", u"_INFO (",
                                u") TrJunctionNode ( 0 500 0 ) (", u") TrVectorSections ( 0 ) ("}) {
    refused.push_back(Database(nodes));
  }
  for (const Text& source : refused) {
    EXPECT_THROW(Rebase_Track_Database(source, Own, 100, 40), Failure) << To_Utf8(source);
  }
}

TEST(Trk_Database_Name, Is_A_Plain_Name_In_The_First_FileName_Of_Its_Own) {
  const std::pair<Text_View, Text_View> cases[] = {
      {u"Tr_RouteFile ( Name ( x ) FileName ( USA1 ) FileName ( b ) )", u"USA1"},
      {u"filename(\r\n\" Old (Line) \"\t)", u"Old (Line)"},
      {u"FILENAME ( Old  Line\r\n)", u"Old  Line"},
      {u"LoadingScreenFileName ( a ) FileNames ( b ) FileName ( c )", u"c"},
      {u"Description ( \"FileName ( a )\" ) _INFO ( FileName ( b ) ) FileName ( c )", u"c"},
      {u"FileName FileName ( a )", u"a"},
  };
  for (const auto& [source, name] : cases)
    EXPECT_EQ(Trk_Database_Name(source), name) << To_Utf8(source);
  for (const Text_View source :
       {u"FileName ( ..\\a )", u"FileName ( \"a/b\" ) FileName ( c )", u"FileName ( C:a )",
        u"FileName ( )", u"FileName ( \"  \" )", u"FileName ( \"a\" \"b\" )", u"FileName ( a\" )",
        u"FileName ( a ( b ) )", u"FileName ( a", u"FileName ( \"a\"", u"FileName", u""}) {
    EXPECT_EQ(Trk_Database_Name(source), std::nullopt) << To_Utf8(source);
  }
}

TEST(Read_Catalogue_Numbers, Every_Id_Of_A_Record_Counts) {
  const Catalogue_Numbers numbers = Read_Catalogue_Numbers(
      u" _INFO ( TrackSection ( 9 ) ) TrackSections ( 40 TrackSection ( 1 SectionSize ( 5 6 ) )"
      u" tracksection\r\n(0 ) TrackSection ( x ) TrackSection 8 ( 8 ) ) TrackShapes ( 30"
      u" TrackShape ( 3 FileName ( a.s ) ) TrackShape ( 4 FileName ( A.s ) )"
      u" TrackShape ( 2 NumPaths ( 1 ) FileName ( TrackShape.s ) SectionIdx ( 1 7 ) ) TrackShape");
  EXPECT_EQ(numbers.Sections.In_Order(), (std::vector<Long>{0, 1}));
  EXPECT_EQ(numbers.Shapes.In_Order(), (std::vector<Long>{2, 3, 4}));
}

TEST(Reference_Counter, Own_Numbers_Go_Before_The_Catalogues_And_Names_Before_Numbers) {
  Reference_Counter counter({Number_Set({1, 1900}), Number_Set({7, 500})}, Own, Shape_Id);
  Text world;
  for (const Text_View object :
       {u"(9) FileName (keep.s", u"(7) FileName (\"a\\new.s\"", u"(9) FileName (\"new.s\"",
        u"(500) FileName (x.s", u"(7) FileName (x.s", u"(8.5) FileName (x.s", u"(-1) FileName (x.s",
        u"(2) FileName (x.s"}) {
    world += Concatenate({u"TrackObj ( SectionIdx ", object, u") ) "});
  }
  const Text unused = u" SectionCurve ( 0 ) 4294967295 0 0";
  const Text three = unused + unused + unused;
  counter.Count_World_File(
      u"w.w", world + u"Dyntrack ( SectionCurve ( 0 ) 1900 0 SectionCurve ( 1 ) 99 0" + three +
                  u" SectionIdx ( 501 ) ) Dyntrack (" + three +
                  u" SectionCurve ( 0 ) 0 0 0 SectionCurve ( 0 ) 33 0 " + u"SectionIdx ( -1 ) )");
  counter.Count_Paths(u"tsection.dat", {1, 1901, 0});
  counter.Count_Track_Database(u"a.tdb", u"TrackDB ( TrVectorSections ( 2 1 500" + Text(Others) +
                                             u"1902 7" + Text(Others) +
                                             u") TrJunctionNode ( 0 44 0 ) )");
  const struct {
    Reference_Kind Kind;
    Long To_Catalogue, To_Own, To_Nowhere;
    std::vector<Lost_Reference> First_Lost;
  } expected[] = {
      {Reference_Kind::Track_Object, 3, 1, 4, {{u"w.w", 9}, {u"w.w", 8.5}, {u"w.w", -1}}},
      {Reference_Kind::Dynamic_Section, 0, 1, 2, {{u"w.w", 99}, {u"w.w", 33}}},
      {Reference_Kind::Dynamic_Shape, 0, 1, 0, {}},
      {Reference_Kind::Path_Section, 1, 1, 1, {{u"tsection.dat", 0}}},
      {Reference_Kind::Database_Section, 1, 0, 1, {{u"a.tdb", 1902}}},
      {Reference_Kind::Database_Shape, 1, 1, 0, {}},
      {Reference_Kind::Junction, 0, 0, 1, {{u"a.tdb", 44}}},
  };
  for (const auto& [kind, to_catalogue, to_own, to_nowhere, first_lost] : expected) {
    const Reference_Count& count = counter.Of(kind);
    const testing::ScopedTrace trace(__FILE__, __LINE__, static_cast<int>(kind));
    EXPECT_EQ(count.To_Catalogue, to_catalogue);
    EXPECT_EQ(count.To_Own, to_own);
    EXPECT_EQ(count.To_Nowhere, to_nowhere);
    EXPECT_EQ(count.First_Lost, first_lost);
  }
}

struct Whole_Route {
  Text Local, World, Database;
  bool operator==(const Whole_Route&) const = default;

  // Moves all of it; the offsets come from the local file.
  Whole_Route Converted(Long sections, Long shapes) const {
    const Log_Line no_log = [](Text_View) {};
    const Rebased_Tsection local = Rebase_Tsection(Local, sections, shapes, no_log);
    const Text world =
        Rebase_Dyntracks(World, local.Section_Delta, local.Shape_Delta, no_log).Output;
    return {
        local.Output,
        Rebase_Own_Shapes(world, local.Own, local.Shape_Delta, Shape_Id, no_log).Output,
        Rebase_Track_Database(Database, local.Own, local.Section_Delta, local.Shape_Delta).Output};
  }
};

TEST(Whole_Route, Of_The_Sample_Converts_There_And_Back) {
  const std::vector<sample::Shape> shapes = sample::Invent_Shapes(300);
  for (std::uint64_t seed = 1; seed <= 5; ++seed) {
    const sample::Random_Source random(seed);
    const auto own = sample::Invent_Dynamic_Tracks(40, 38000, 37000, random);
    const sample::World world = sample::Invent_World({u"A", shapes, own}, 60, true, random);
    sample::Track_Database database;
    database.Add_Tile(-5354, 14850, world.Track);
    const Whole_Route before{sample::Local_Catalogue(own), world.File, database.File()};
    const Whole_Route after = before.Converted(40000, 40010);
    EXPECT_NE(after.World, before.World);
    EXPECT_NE(after.Database, before.Database);
    EXPECT_EQ(after.Converted(38000, 37000), before) << seed;
  }
}

}  // namespace
}  // namespace rivelt
