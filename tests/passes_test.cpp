// The passes over the texts of a route and of the catalogue, without a window or a disk.

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "catalogue/catalogue.h"
#include "convert/count_references.h"
#include "convert/rebase_tsection.h"
#include "convert/track_database.h"
#include "convert/whole_route.h"
#include "convert/world_passes.h"
#include "routes/route_name.h"
#include "text/letter_case.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using Lines = std::vector<Text>;

const Log_Line No_Log = [](Text_View) {};

// A text before and after a pass, in which each change is marked as {old|new}.
struct Change {
  explicit Change(Text_View marked) {
    bool is_old = true;
    bool is_new = true;
    for (const char16_t unit : marked) {
      const bool is_mark = unit == u'{' || unit == u'|' || unit == u'}';
      if (is_mark) is_old = unit != u'|';
      if (is_mark) is_new = unit != u'{';
      if (is_old && !is_mark) Before += unit;
      if (is_new && !is_mark) After += unit;
    }
  }

  Text Before, After;
};

// The pass makes the changes that are marked, counts so many, and logs these lines.
template <class Pass>
void Expect_Changes(const Pass& pass, Text_View marked, Long count, const Lines& logged) {
  SCOPED_TRACE(To_Utf8(marked));
  Lines lines;
  const Change world(marked);
  const Passed_World passed = pass(world.Before, [&](Text_View line) { lines.emplace_back(line); });
  EXPECT_EQ(passed.Output.value_or(world.Before), world.After);
  EXPECT_EQ(passed.Count, count);
  EXPECT_EQ(lines, logged);
}

template <class Pass>
void Expect_Refused(const Pass& pass, const std::vector<Text>& texts) {
  for (const Text& text : texts) EXPECT_THROW(pass(text), Failure) << To_Utf8(text);
}

// What gives the id for a name, or -1.
std::function<Long(Text_View)> Shape_Ids(const std::map<Text, Long>& ids) {
  return [ids](Text_View name) {
    const auto id = ids.find(Fold_Case(name));
    return id == ids.end() ? -1 : id->second;
  };
}

TEST(Route_Display_Name, Is_After_The_First_Name_In_The_File) {
  const std::pair<Text_View, Text_View> cases[] = {
      {u"Name ( \" North Line \" )", u"North Line"},
      {u"RouteID ( x ) NAME(North (Line) )", u"North (Line"},
      {u"FileName ( x.s ) Name ( y )", u"x.s"},
      {u"a Name b ) ( c )", u"c"},
      {u"Name ( \ta\r\n )", u"\ta\r\n"},
  };
  for (const auto& [source, name] : cases)
    EXPECT_EQ(Route_Display_Name(source), name) << To_Utf8(source);
  Expect_Refused(Route_Display_Name, {u"", u"Nam ( a )", u"Name ( a", u"Name a"});
}

TEST(Catalogue_Version, Is_Between_Build_And_The_Next_Bracket) {
  EXPECT_EQ(Catalogue_Version(u"rebuild: x )"), u" x ");
  EXPECT_EQ(Catalogue_Version(u"Build.) )"), u"");
  EXPECT_EQ(Catalogue_Version(u"no mark"), std::nullopt);
  EXPECT_THROW(Catalogue_Version(u"Build)"), Failure);
  EXPECT_THROW(Catalogue_Version(u"Build 1"), Failure);
}

using Shapes = std::vector<std::pair<Long, Text>>;

Catalogue Read_Into(Shapes& shapes, Text_View text) {
  return Read_Catalogue(text, [&](Long id, Text_View name) { shapes.emplace_back(id, name); });
}

TEST(Read_Catalogue, Reads_Counts_And_Every_Id_Outside_Its_Comments) {
  Shapes shapes;
  const Catalogue catalogue = Read_Into(
      shapes,
      u" _INFO ( TrackSection ( 9 ) ) x tracksections ( 2.5\r\nTrackSection ( 1 SectionSize ( 5 6 "
      u") )"
      u" tracksection\r\n(0 ) TrackSection ( x ) TrackSection 8 ( 8 ) TrackSection ( 1e999 ) )"
      u" TrackShapes ( 30 _SKIP ( TrackShapes ( 7 ) )"
      u" TrackShape ( 3 FileName ( a.s ) ) TrackShape ( 4 FileName ( A.s ) )"
      u" TrackShape ( 2 NumPaths ( 1 ) FileName ( TrackShape.s ) SectionIdx ( 1 7 ) ) TrackShape");
  EXPECT_EQ(catalogue.Reserved_Sections, 2);
  EXPECT_EQ(catalogue.Reserved_Shapes, 30);
  EXPECT_EQ(shapes, (Shapes{{3, u"a.s"}, {4, u"A.s"}}));
  EXPECT_EQ(catalogue.Declared.Sections.In_Order(), (std::vector<Long>{0, 1}));
  EXPECT_EQ(catalogue.Declared.Shapes.In_Order(), (std::vector<Long>{2, 3, 4}));
  const auto read = [&](Text_View text) { Read_Into(shapes, text); };
  EXPECT_EQ(Read_Into(shapes, u"7 TrackSections TrackShapes").Reserved_Sections, 7) << "no (";
  Expect_Refused(read, {u"TrackSection ( 1", u"TrackSections ( 2147483648 TrackShapes ( 1",
                        u"TrackShapes ( 1 TrackSections ( 1"});
}

TEST(Read_Catalogue, Takes_Records_With_Their_Name_In_The_First_Bracket) {
  const auto shapes_of = [](Text_View records) {
    Shapes shapes;
    Read_Into(shapes, u"TrackSections ( 1 TrackShapes ( " + Text(records));
    return shapes;
  };
  const std::pair<Text_View, Shapes> cases[] = {
      {u" 20 TrackShape ( 7 FileName ( \" a b.s \" ) Other ( 1 ) )", {{7, u"a b.s"}}},
      {u"trackshape ( 8 Other ( 1 ) FILENAME ( b.s ) ) TrackShape(9 filename(c.s))", {{9, u"c.s"}}},
      {u"TrackShape ( x FileName ( a.s ) )", {{0, u"a.s"}}},
      {u"TrackShape ( 2.5 FileName ( \ta.s\r\n) )", {{2, u"\ta.s\r\n"}}},
      {u"TrackShape ( 1 FileName a.s ) ( b.s )", {{1, u"b.s"}}},
      {u"TrackShape ( 1 FileName a.s )", {{1, u"1 FileName a.s"}}},
      {u"TrackShape ( 1 FileName ( a.s ) TrackShape FileName )", {{1, u"a.s"}}},
      {u"TrackShape ( 1 )", {}},
      {u"TrackShape ( 1 FileName ( TrackShape ( 2 ) FileName ( x.s ) )", {{1, u"TrackShape ( 2"}}},
  };
  for (const auto& [source, found] : cases) EXPECT_EQ(shapes_of(source), found) << To_Utf8(source);
  // In the last one each record has the whole rest for a name.
  Text nested;
  for (int i = 0; i < 2000; ++i) nested += u"TrackShape ( 1 FileName ( ";
  Expect_Refused(shapes_of, {u"TrackShape ( 3000000000 FileName ( a.s ) )", nested + u")"});
}

TEST(Rebase_Tsection, All_Ids_Move_By_As_Much_As_The_First_Of_Their_Kind) {
  const Change file(
      u"TrackSections ( 2\r\nTrackSection ( SectionCurve ( 1 ) {1900|2000} 0 250 )\r\n"
      u"TrackSection ( sectioncurve ( 1 ){ -150|-50} 30 250 )\r\n)\r\nSectionIdx ( 2\r\n"
      u"TrackPath ( {800|900} 2 {1900|2000} {&hFF|355} )\r\n"
      u"TRACKPATH ({801| 901} x {|100} {1901|2001}{| })\r\nTrackPath ( {802|902} )\r\n)\r\n");
  const Rebased_Tsection rebased = Rebase_Tsection(file.Before, 2000, 900, No_Log);
  EXPECT_EQ(rebased.Output, file.After);
  EXPECT_EQ(rebased.Section_Delta, 100);
  EXPECT_EQ(rebased.Shape_Delta, 100);
}

TEST(Rebase_Tsection, A_Field_That_Is_Not_One_Number_Is_Refused) {
  std::vector<Text> refused = {u"", u"SectionCurve 1 2000 SectionIdx ("};
  for (const Text_View field : {u" 5 10", u" 1900\t0", u" 190,1", u" &HF\tF", u" 1e\t5", u" 5.\t5",
                                u" &O8", u" 1900x7", u" 4294967295", u" 1e999"}) {
    refused.push_back(Concatenate({u"SectionCurve ( 1 )", field, u" 0 SectionIdx ( 0"}));
  }
  Expect_Refused([](Text_View text) { Rebase_Tsection(text, 2000, 900, No_Log); }, refused);
}

Text Dyntrack(Text_View first_number, Text_View last_number, Text_View reference) {
  Text text = u"DynTrack ( Comment ( my dyntrack ) Elevation ( 2.34185e-38 ) ";
  const Text_View unused = u" 4294967295 ";
  for (const Text_View number : {first_number, unused, unused, unused, last_number}) {
    text += Concatenate({u"SectionCurve ( 0 )", number, u"10 0\r\n"});
  }
  return Concatenate({text, u"SectionIdx ", reference, u" )"});
}

TEST(Rebase_Dyntracks, Section_Numbers_And_References_Of_Every_Form) {
  const std::pair<Text_View, Text_View> cases[] = {
      {u" {512|612} 0 ", u"( {40|80} )"},
      {u"{  -512|-412} ", u"( {-1|39} )"},
      // What an editor left of a track.
      {u" 0 0.064127 ", u"( -2147483648 )"},
      {u" 0 -2.34185e-38 ", u"({12| 52 })"},
      {u" {07|107} ", u"( {-1|39} )"},
  };
  const auto pass = [](Text_View text, const Log_Line& log) {
    return Rebase_Dyntracks(text, 100, 40, log);
  };
  for (const auto& [section, reference] : cases) {
    const Text_View other = u" SectionCurve ( 0 ) 99 1 ";
    const Text world =
        Concatenate({other, u"FileName ( \"dyntracks\" ) ",
                     Dyntrack(section, u" {99|199} ", reference), u" Y ( -1 ) SectionIdx ( 7 ) )",
                     Dyntrack(u"{  099| 199} ", u" {99|199} ", u"( {-1|39} )"), other});
    Expect_Changes(pass, world, 2, Lines{u" 2 dynamic tracks"});
  }
}

TEST(Rebase_Dyntracks, A_Track_That_Is_Cut_Short_Or_Runs_Into_The_Next_Is_Refused) {
  const auto dyntrack = [](Text_View first) { return Dyntrack(first, u" 4294967295 ", u"( 40 )"); };
  const Text track = dyntrack(u" 512 ");
  std::vector<Text> refused = {
      u"Dyntrack ( " + track,                                       // the next one's records
      Replace_Text(track, u"SectionIdx", u"SectionIndex") + track,  // the next one's reference
      Replace_Text(track, u"( 40 )", u"( 40 ") + u" Dyntrack )",
      dyntrack(u"5 "),
      u"MyDyntracks( SectionCurve ( 0 ) 0 " + track,
      Replace_Text(track, u"SectionIdx (", u"SectionIdx "),
  };
  for (std::size_t length = 8; length < track.size() - 2; ++length) {
    refused.push_back(track.substr(0, length));
  }
  Expect_Refused([](Text_View text) { Rebase_Dyntracks(text, 1, 1, No_Log); }, refused);
}

Passed_World Check(Text_View text, const Log_Line& log) {
  const std::map<Text, Text> transforms{{u"old.s", u"new.s"},     {u"gone.s", u" -delete-"},
                                        {u"keep2.s", u"keep.s"},  {u"lost.s", u"nowhere.s"},
                                        {u"dash.s", u"-delete-"}, {u"go(ne.s", u" -delete-"}};
  const auto mapped = [&](Text_View name) {
    const auto found = transforms.find(Fold_Case(name));
    return found == transforms.end() ? Text(name) : found->second;
  };
  return Check_Track_Objects(text, {mapped, Shape_Ids({{u"keep.s", 31}, {u"new.s", 77}})}, log);
}

TEST(Track_Objects, Each_Outcome_Of_A_Record_Writes_Logs_And_Counts_As_It_Should) {
  const struct {
    Text_View Record;
    Lines Logged;
    Long Count;
  } cases[] = {
      {u"SectionIdx ({007| 7 }) FileName ({| }else.s{| })", {u"Unknown shape else.s, id  7"}, 0},
      {u"SectionIdx ( 7 ) FileName ({lost.s| nowhere.s })", {u"Unknown shape nowhere.s, id  7"}, 0},
      {u"SectionIdx ({30.5| 31 }) FileName ({| }KEEP.s{| })", {u"KEEP.s id:  30.5 ->  31"}, 1},
      {u"SectionIdx ({| }31{| }) FileName ({keep2.s| keep.s })", {}, 1},
      {u"SectionIdx ({| }5{| }) FileName ({dash.s| -delete- })",
       {u"Unknown shape -delete-, id  5"},
       0},
      {u"SectionIdx ({| }31{| }) FileName ({| }\"keep.s\"{| })",
       {u"Unknown shape \"keep.s\", id  31"},
       0},
      {u"FileName ({old.s| new.s }) X ( \"a\" -1 ) SectionIdx ({31| 77 })",
       {u"new.s id:  31 ->  77"},
       1},
      {u"FileName ({| }keep.s{| }) FileName (old.s) SectionIdx ({| }31{| })", {}, 0},
      {u"OldFileName (old.s) SectionIdx ({| }31{| }) FileName ({| }keep.s{| }) FileName (x)",
       {},
       0},
  };
  for (const auto& [record, logged, count] : cases) {
    Lines lines = logged;
    lines.insert(lines.end(), logged.begin(), logged.end());
    lines.push_back(Number_Text(2 * count) + u" track sections has been changed");
    const Text object = Concatenate({u"TrackObj ( ", record, u" ) "});
    Expect_Changes(Check, object + object + u"\" FileName ( x ) )", 2 * count, lines);
  }
}

TEST(Track_Objects, A_Record_That_Cannot_Be_Read_Stays_Character_For_Character) {
  const Text good = u" TrackObj ( SectionIdx ({1| 31 }) FileName ({| }keep.s{| }) )";
  const Text left = u"Left a track object as it is, I cannot read it";
  const Text checked = u"keep.s id:  1 ->  31";
  for (const Text_View odd : {u"TrackObj ( FileName ( a.s ) )", u"TrackObj ( SectionIdx (1) )",
                              u"TrackObj ( FileName (gone.s) SectionIdx (1) FileName )",
                              u"TrackObj ( SectionIdx ( FileName ) X ( 1 ) )",
                              u"TrackObj SectionIdx ( ( 1 ) FileName (gone.s) )",
                              u"TrackObj ( SectionIdx (1) FileName (\"a)b.s\") )"}) {
    Expect_Changes(Check, Concatenate({odd, good, odd, good}), 2,
                   Lines{left, checked, left, checked, u" 2 track sections has been changed"});
  }
}

TEST(Track_Objects, Removal_Walks_The_Record_Without_Its_Old_Id_And_Name) {
  for (const Text_View record : {u"(() SectionIdx ( 1 ) FileName ( gone.s ) Other ( ( 1 ) 2 ) )",
                                 u"( () FileName (go(ne.s) X ( 1 ) SectionIdx ( 1 ) ( ) )"}) {
    Expect_Changes(Check, Concatenate({u"( a {TrackObj ", record, u"|}\r\nb )"}), 1,
                   Lines{u" 1 track sections has been changed"});
  }
}

const Declared_Ids Own{Number_Set({1900, 1901, 2.5, 3e9}), Number_Set({501, 500, 500, 0})};
const Declared_Ids Of_Catalogue{Number_Set({1, 1900, 2000}), Number_Set({7, 500, 541})};
const Moving_Ids Sections(Own.Sections, Of_Catalogue.Sections, 100);
const Moving_Ids Moving_Shapes(Own.Shapes, Of_Catalogue.Shapes, 40);
const auto Shape_Id = Shape_Ids({{u"keep.s", 500}, {u"new.s", 7}});

Passed_World Rebase_World(Text_View text, const Log_Line&) {
  const Renumbered_File file = Rebase_Own_Shapes(text, Moving_Shapes, Shape_Id);
  return {file.Output, file.Shape_Count};
}

TEST(Rebase_Own_Shapes, Only_The_Digits_Of_Own_Shapes_Change) {
  for (const Text_View record : {
           u"( SectionIdx ({500|540}) FileName ( DynaTrax-500.s ) )",
           u"( FileName (a.s) X ( 1 ) sectionidx\r\n(\t{00501|541} \r\n) )",
           u"( SectionIdx ( {500|540} own ) FileName ( NEW.s ) ( 500 ) )",
           u"( SectionIdx ({5e2|540}) FileName (x) SectionIdx (500) )",
           u"( X ( TrackObj ( SectionIdx ({501|541}) FileName (x) ) ) )",
           u"( SectionIdx ({500|540}) FileName (x)",  // unbalanced
           u"( SectionIdx ({501|541}) FileName (keep.s) )",
           u"( SectionIdx (500) FileName (KEEP.s) )",
           u"( SectionIdx ( - ) FileName (a.s) )",
           u"( SectionIdx (500) FileName (\" keep.s\") )",
           u"( SectionIdx (500) FileName (\"..\\shapes\\keep.s\") )",
           u"( SectionIdx (1900) FileName (x) )",
           u"( SectionIdx (500.5) FileName (x) )",
           u"( SectionIdx ( ) FileName (x) ) Dyntrack ( SectionIdx (500) )",
       }) {
    const bool moves = record.find(u'{') != Text::npos;
    const Text world = Concatenate({u"( TrackObj ", record, u"\r\n TrackObj ", record, u" )"});
    Expect_Changes(Rebase_World, world, moves ? 2 : 0, Lines{});
  }
}

TEST(Rebase_Own_Shapes, Counts_What_The_Catalogue_Shares_And_What_Nobody_Has_Declared) {
  Text world;
  for (const Text_View object : {u"500) FileName (keep.s", u"540) FileName (x", u"541) FileName (x",
                                 u"40) FileName (x", u"500) FileName (x"}) {
    world += Concatenate({u"TrackObj ( SectionIdx (", object, u") ) "});
  }
  const Renumbered_File file = Rebase_Own_Shapes(world, Moving_Shapes, Shape_Id);
  EXPECT_EQ(file.Shape_Count, 1);
  EXPECT_EQ(file.Shared_Count, 1);
  EXPECT_EQ(file.Taken_Count, 2);
  const Text database = u"TrackDB ( TrJunctionNode ( 0 540 0 ) TrJunctionNode ( 0 2001 0 ) )";
  EXPECT_EQ(Rebase_Track_Database(database, Sections, Moving_Shapes).Taken_Count, 1);
  EXPECT_EQ(Rebase_Track_Database(database, Sections, {}).Taken_Count, 0) << "they do not move";
}

TEST(Track_Objects, What_No_Later_Text_Completes_Is_Refused_By_Both_Passes) {
  std::vector<Text> cut = {u"TrackObj ( ) TrackObj (",
                           u"TrackObj ( FileName ( a.s ) SectionIdx ( 1 )"};  // unbalanced
  const Text whole = u"TrackObj ( SectionIdx ( 500 ) FileName ( a.s )";
  for (std::size_t length = 8; length < whole.size(); ++length) {
    cut.push_back(whole.substr(0, length));
  }
  // Of what has no own number nobody looks for the end.
  const auto move = [](Text_View text) {
    Rebase_World(Concatenate({u"SectionIdx ( 500 ) ", text}), No_Log);
  };
  Expect_Refused(move, cut);
  const auto check = [](Text_View text) { Check(text, No_Log); };
  Expect_Refused(check, cut);
  Expect_Refused(check, {u"TrackObj ( SectionIdx ( 1 ) )",
                         u"TrackObj ( SectionIdx ( 1 ) FileName ( gone.s )"});
}

TEST(Reasons, Name_The_Line_And_What_Is_Missing_There) {
  const auto dyntracks = [](Text_View text) { Rebase_Dyntracks(text, 1, 1, No_Log); };
  const auto tsection = [](Text_View text) { Rebase_Tsection(text, 1, 1, No_Log); };
  const auto objects = [](Text_View text) { Check(text, No_Log); };
  const auto database = [](Text_View text) { Rebase_Track_Database(text, {}, {}); };
  const auto catalogue = [](Text_View text) { Read_Catalogue(text, [](Long, Text_View) {}); };
  const struct {
    std::function<void(Text_View)> Read;
    Text_View Source, Reason;
  } cases[] = {
      {dyntracks, u"\r\nDyntrack (\r\nSectionCurve ( 0 ) 512 1\r\n)",
       u"line 3: no \"SectionCurve\" after the \"Dyntrack\" of line 2"},
      {tsection, u"SectionCurve ( 1 ) 5 1 ",
       u"line 1: more than one number after the \"SectionCurve\""},
      {tsection, u"SectionIdx ( 1\nTrackPath ( 3e9 1 )", u"line 2: -2999999999 is out of range"},
      {objects, u"\n\nTrackObj ( SectionIdx ( 1 )",
       u"line 3: no \"FileName\" after the \"TrackObj\""},
      {database, u"TrackDB (\nTrJunctionNode ( 0 x ) )", u"line 2: \"x\" is not a number"},
      {database, u"TrackDB (\n", u"line 2: the text ends too early"},
      {Route_Display_Name, u"\nName ( a", u"line 2: no \")\" after the \"Name\""},
      {catalogue, u"_INFO (\n)\nTrackSections ( 1 )", u"line 3: no \"TrackShapes\""},
      {catalogue, u"_SKIP ( ) _INFO ( )\n_INFO (", u"line 2: no \")\" closes a block"},
  };
  for (const auto& [read, source, reason] : cases) {
    try {
      read(source);
      ADD_FAILURE() << To_Utf8(source);
    } catch (const Failure& failure) {
      EXPECT_EQ(To_Utf8(failure.Reason()), To_Utf8(reason));
    }
  }
}

// The fields of a vector section after its two ids.
constexpr Text_View Others =
    u" -5636 15116 380 2 0 00 -5636\t15116 -948.415\r\n1.485 1e-05 0 -1.#IND 500 ";

// A database with these nodes, in which OWN is a section of the route's own.
Text Database(Text_View nodes) {
  const Text filled = Replace_Text(nodes, u"OWN", u"{1901|2001} {501|541}OTHERS");
  return Concatenate({u"SIMISA@@@@@@@@@@JINX0T0t______\r\n\r\nTrackDB (\r\n",
                      Replace_Text(filled, u"OTHERS", Others), u"\r\n)\r\n"});
}

TEST(Rebase_Track_Database, Only_The_Digits_Of_Own_Numbers_Change) {
  const struct {
    Text_View Nodes;
    Long Sections, Shapes;
  } cases[] = {
      {u"TrVectorSections ( 0 ) TrVectorSections(0)", 0, 0},
      {u"TrVectorSections ( 1 OWN)", 1, 1},
      {u"a ( trvectorsections\r\n(\t3 OWN501 1901OTHERSOWN) ( 1901 ) )", 2, 2},
      {u"TrVectorSections ( 1 {1900|2000} 7OTHERS)", 1, 0},
      {u"TrVectorSections ( 1 _INFO ( 1 ( ) 1900 ) OWNComment ( ) )", 1, 1},
      {u"TrJunctionNode ( 0 {500|540} 0 ) TrJunctionNode ( 500 7 ) UiD ( 500 500 )", 0, 1},
      {u"Name ( \"TrJunctionNode ( 0 500\" ) Name ( \"TrVectorSections (\" )", 0, 0},
      {u"Name ( \"\\\" ( \\\\\" ) ( \"\" )", 0, 0},
      {u"Name ( 12\" ( \" ) )\r\n ( \" )\r\nTrJunctionNode ( 0 {500|540} ) Name ( \"b\" )", 0, 1},
      {u"_SKIP ( TrJunctionNode ( 0 500 0 ) ) OldTrJunctionNode ( 0 500 0 )", 0, 0},
      {u") ) ( \" )", 0, 0},
  };
  for (const auto& [nodes, sections, shapes] : cases) {
    const Change database(Database(nodes));
    const Renumbered_File rebased = Rebase_Track_Database(database.Before, Sections, Moving_Shapes);
    EXPECT_EQ(rebased.Output.value_or(database.Before), database.After) << To_Utf8(nodes);
    EXPECT_EQ(rebased.Section_Count, sections) << To_Utf8(nodes);
    EXPECT_EQ(rebased.Shape_Count, shapes) << To_Utf8(nodes);
  }
}

TEST(Rebase_Track_Database, What_Is_Cut_Or_Not_Of_The_Form_Is_Refused) {
  const Text whole =
      Change(Database(u"TrVectorSections ( 1 OWN) TrJunctionNode ( 0 500 0 )")).Before;
  std::vector<Text> refused = {u"SIMISA@F\u0190", u"TrackDB", u"TrackDBs ( )", u"\"TrackDB ( )\"",
                               u"_SKIP ( TrackDB ( ) )"};
  for (std::size_t length = 0; length < whole.size() - 2; length += 3) {
    refused.push_back(whole.substr(0, length));
  }
  for (const Text_View sections :
       {u"( )", u"( x )", u"( 0 0 )", u"( 1 )", u"( 2 OWN)", u"( 0 OWN)", u"( 1 0 OWN)",
        u"( 0.0625 1900 )", u"( -1 )", u"( 1e999 )", u"( 1 xOWN)", u"( 1 \"OWN)",
        u"( 1 1900 ( 501 )OTHERS)", u"( 1 1900 \"501\"OTHERS)", u"( 1 1900 501xOTHERS)",
        u"( 1 1900 1e999OTHERS)", u"", u")"}) {
    const Text nodes = Concatenate({u"TrVectorSections ", sections});
    refused.push_back(Change(Database(nodes)).Before);
  }
  for (const Text_View nodes : {u"TrJunctionNode", u"TrJunctionNode 0 500", u"TrJunctionNode ( 0 )",
                                u"TrJunctionNode ( 0 x 0 )", u"TrJunctionNode ( 0 ( 500 ) )",
                                u"TrJunctionNode ( 0 \"500\" )", u"(", u"_INFO (",
                                u") TrJunctionNode ( 0 500 0 ) (", u") TrVectorSections ( 0 ) ("}) {
    refused.push_back(Database(nodes));
  }
  Expect_Refused([](Text_View text) { Rebase_Track_Database(text, Sections, Moving_Shapes); },
                 refused);
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

TEST(Reference_Counter, Own_Numbers_Go_Before_The_Catalogues_And_Names_Before_Numbers) {
  Reference_Counter counter({Number_Set({1, 1900}), Number_Set({7, 500})}, Own, Shape_Id);
  Text world;
  for (const Text_View object :
       {u"(9) FileName (keep.s", u"(7) FileName (\"a\\new.s\"", u"(9) FileName (\"new.s\"",
        u"(500) FileName (X.s", u"(500) FileName (x.s", u"(7) FileName (x.s",
        u"(8.5) FileName (x.s", u"(-1) FileName (x.s", u"(2) FileName (x.s"}) {
    world += Concatenate({u"TrackObj ( SectionIdx ", object, u") ) "});
  }
  counter.Count_World_File(u"w.w", world + Dyntrack(u" 1900 ", u" 99 ", u"( 501 )") +
                                       Dyntrack(u" 0 ", u" 33 ", u"( -1 )"));
  counter.Count_Paths(u"tsection.dat", {1, 1901, 0});
  counter.Count_Track_Database(u"a.tdb", u"TrackDB ( TrVectorSections ( 2 1 500" + Text(Others) +
                                             u"1902 7" + Text(Others) +
                                             u") TrJunctionNode ( 0 44 0 ) )");
  const struct {
    Reference_Kind Kind;
    std::array<Long, 3> Numbers;  // to the catalogue, to the route's own, to nowhere
    std::vector<Lost_Reference> Lost;
  } expected[] = {
      {Reference_Kind::Track_Object,
       {3, 2, 4},
       {{u"w.w", 9}, {u"w.w", 8.5}, {u"w.w", -1}, {u"w.w", 2}}},
      {Reference_Kind::Dynamic_Section, {0, 1, 2}, {{u"w.w", 99}, {u"w.w", 33}}},
      {Reference_Kind::Dynamic_Shape, {0, 1, 0}, {}},
      {Reference_Kind::Path_Section, {1, 1, 1}, {{u"tsection.dat", 0}}},
      {Reference_Kind::Database_Section, {1, 0, 1}, {{u"a.tdb", 1902}}},
      {Reference_Kind::Database_Shape, {1, 1, 0}, {}},
      {Reference_Kind::Junction, {0, 0, 1}, {{u"a.tdb", 44}}},
  };
  for (const auto& [kind, numbers, lost] : expected) {
    EXPECT_EQ(counter.Of(kind).Numbers, numbers) << static_cast<int>(kind);
    EXPECT_EQ(counter.Of(kind).Lost, lost) << static_cast<int>(kind);
  }
  EXPECT_EQ(counter.Unknown().size(), 7u);
  const Unknown_Shape& shape = counter.Unknown().at({u"x.s", 500});
  EXPECT_EQ(shape.Name + shape.First_File, u"X.sw.w");
  EXPECT_EQ(shape.Objects, 2);
  EXPECT_EQ(shape.Where, Leads::To_Own);
  EXPECT_EQ(counter.Unknown().at({u"x.s", 7}).Where, Leads::To_Catalogue);
}

}  // namespace
}  // namespace rivelt
