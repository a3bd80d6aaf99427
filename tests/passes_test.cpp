// The passes over the texts of a route and of the catalogue, without a window or a disk.

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "catalogue/catalogue_numbers.h"
#include "catalogue/catalogue_text.h"
#include "convert/count_references.h"
#include "convert/rebase_tsection.h"
#include "convert/track_database.h"
#include "convert/whole_route.h"
#include "convert/world_passes.h"
#include "routes/route_name.h"
#include "sample/track.h"
#include "text/letter_case.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using Lines = std::vector<Text>;

Log_Line Into(Lines& lines) {
  return [&lines](Text_View line) { lines.emplace_back(line); };
}
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

// The pass makes the changes that are marked, counts so many, and logs these lines if they are
// given.
template <class Pass>
void Expect_Changes(const Pass& pass, Text_View marked, Long count,
                    const std::optional<Lines>& logged) {
  SCOPED_TRACE(To_Utf8(marked));
  Lines lines;
  const Change world(marked);
  const Passed_World passed = pass(world.Before, Into(lines));
  EXPECT_EQ(passed.Output, world.After);
  EXPECT_EQ(passed.Count, count);
  if (logged) {
    EXPECT_EQ(lines, *logged);
  }
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

TEST(Read_Count, Reads_After_The_Keyword_And_Leaves_The_Rest) {
  Text_View rest = u"x tracksections ( 2.5\r\nTrackSection ( 0";
  EXPECT_EQ(Read_Count(rest, u"TrackSections"), 2);
  EXPECT_EQ(rest, u" 2.5\r\nTrackSection ( 0");
  rest = u"7 TrackSections";  // no "(": the whole text stays
  EXPECT_EQ(Read_Count(rest, u"TrackSections"), 7);
  for (Text_View refused : {u"TrackSection ( 1", u"TrackSections ( 2147483648"}) {
    EXPECT_THROW(Read_Count(refused, u"TrackSections"), Failure);
  }
}

using Shapes = std::vector<std::pair<Long, Text>>;

Shapes Shapes_Of(Text_View text) {
  Shapes shapes;
  Read_Shapes(text, [&](Long id, Text_View name) { shapes.emplace_back(id, name); });
  return shapes;
}

TEST(Read_Shapes, Takes_Records_With_Their_Name_In_The_First_Bracket) {
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
  for (const auto& [source, found] : cases) EXPECT_EQ(Shapes_Of(source), found) << To_Utf8(source);
  EXPECT_THROW(Shapes_Of(u"TrackShape ( 3000000000 FileName ( a.s ) )"), Failure);
  // Records that one bracket closes, so that each has the whole rest for a name.
  Text nested;
  for (int i = 0; i < 2000; ++i) nested += u"TrackShape ( 1 FileName ( ";
  EXPECT_THROW(Shapes_Of(nested + u")"), Failure);
}

// Section records with their number fields, as in a local catalogue.
Text Section_Records(std::initializer_list<Text_View> fields) {
  Text text;
  for (const Text_View field : fields) text += Concatenate({u"SectionCurve ( 1 )", field, u" 0 "});
  return text;
}

TEST(Rebase_Tsection, A_Whole_File_And_The_Parts_That_One_May_Lack) {
  const struct {
    Text Marked;
    Long Section_Delta, Shape_Delta;
  } cases[] = {
      {u"TrackSections ( 2\r\nTrackSection ( SectionCurve ( 1 ) {1900|2000} 0 250 )\r\n"
       u"TrackSection ( sectioncurve ( 1 ) {1901|2001} 30 250 )\r\n)\r\nSectionIdx ( 2\r\n"
       u"TrackPath ( {800|900} 2 {1900|2000} {1901|2001} )\r\n"
       u"TRACKPATH ({801| 901} x {|100} {1901|2001}{| })\r\nTrackPath ( {802|902} )\r\n)\r\n",
       100, 100},
      {Section_Records({u"{  001900| 2000}", u"{ -150|-50}", u" {&h76C|2000}", u" {&HFF|355}",
                        u" {1900|2000}.5", u" {4294967295|4294967395}"}) +
           u"SectionIdx (",
       100, 0},
      {u"SectionIdx ( 1 TrackPath ( {800|900} 1 7 )", 0, 100},
      {u"SectionIdx ( 1 TrackPath ( {800|900} 1 {|0} 3 )", 0, 100},
      {u"SectionCurve ( 1 ) 2000 0 SectionIdx ( 1 TrackPath ( 900 1 2000 )", 0, 0},
      {u"TrackPath ( 800 ) SectionIdx ( 1 )", 0, 0},
  };
  for (const auto& [marked, section_delta, shape_delta] : cases) {
    const Change file(marked);
    const Rebased_Tsection rebased = Rebase_Tsection(file.Before, 2000, 900, No_Log);
    EXPECT_EQ(rebased.Output, file.After) << To_Utf8(marked);
    EXPECT_EQ(rebased.Section_Delta, section_delta) << To_Utf8(marked);
    EXPECT_EQ(rebased.Shape_Delta, shape_delta) << To_Utf8(marked);
  }
}

TEST(Rebase_Tsection, Texts_Of_Another_Form_Are_Refused) {
  std::vector<Text> refused = {u"",
                               u"SectionCurve ( 1 ) 1900 0",
                               u"SectionIdx 1 TrackPath",
                               u"SectionIdx ( 1 TrackPath 800",
                               u"SectionCurve ( 1 ) 1900",
                               u"SectionIdx ( 1 TrackPath ( 800 1",
                               u"SectionIdx ( 1 TrackPath (  )",
                               u"SectionIdx ( 1 TrackPath ( -3000000000 1 )",
                               u"SectionCurve 1 2000 SectionIdx ("};
  for (const Text_View field : {u" 5 10", u"      1900", u" word 1900", u" - ", u" &H", u" &O8",
                                u" . ", u" &HFG", u" 1900)", u" 4294967295"}) {
    refused.push_back(Section_Records({field}) + u"SectionIdx ( 0");
  }
  Expect_Refused([](Text_View text) { Rebase_Tsection(text, 2000, 900, No_Log); }, refused);
}

Text Dyntrack(Text_View first_number, Text_View last_number, Text_View reference) {
  Text text = u"DynTrack ( Elevation ( 2.34185e-38 ) ";
  const Text_View unused = u" 4294967295 ";
  for (const Text_View number : {first_number, unused, unused, unused, last_number}) {
    text += Concatenate({u"SectionCurve ( 0 )", number, u"10 0\r\n"});
  }
  return Concatenate({text, u"SectionIdx ", reference, u" )"});
}

TEST(Rebase_Dyntracks, Section_Numbers_And_References_Of_Every_Form) {
  const std::pair<Text_View, Text_View> cases[] = {
      {u" {512|612} 0 ", u"( {40|80} )"},
      {u" {512|612} 0 ", u"({-2147483648|-2147483608 })"},
      {u" {&HFF|355} ", u"( {&H10|56} )"},
      {u"{  -512|-412} ", u"( {-1|39} )"},
      // What an editor left of a track.
      {u" 0 0.064127 ", u"( -2147483648 )"},
      {u"  7  ", u"(  -1)"},
      {u" 0 -2.34185e-38 ", u"({12| 52 })"},
      {u" {07|107} ", u"( {-1|39} )"},
  };
  const auto pass = [](Text_View text, const Log_Line& log) {
    return Rebase_Dyntracks(text, 100, 40, log);
  };
  for (const auto& [section, reference] : cases) {
    const Text_View other = u" SectionCurve ( 0 ) 99 1 ";
    const Text world = Concatenate(
        {other, Dyntrack(section, u" {99|199} ", reference), u" Y ( -1 ) SectionIdx ( 7 ) )",
         Dyntrack(u"{  099| 199} ", u" {99|199} ", u"( {40|80} )"), other});
    Expect_Changes(pass, world, 2, Lines{u" 2 dynamic tracks"});
  }
}

TEST(Rebase_Dyntracks, A_Track_That_Is_Cut_Short_Or_Runs_Into_The_Next_Is_Refused) {
  const auto dyntrack = [](Text_View first) { return Dyntrack(first, u" 4294967295 ", u"( 40 )"); };
  const Text track = dyntrack(u" 512 ");
  std::vector<Text> refused = {
      u"Dyntrack " + track,                                         // the next one's records
      Replace_Text(track, u"SectionIdx", u"SectionIndex") + track,  // the next one's reference
      Replace_Text(track, u"( 40 )", u"( 40 ") + u" Dyntrack )",
      dyntrack(u"5 "),
      dyntrack(u"     "),
      dyntrack(u" 512) "),
      dyntrack(u" &H "),
      u"Dyntrack SectionCurve ( 0 ) 0 Dyntrack " + track.substr(8),  // the next one's records
      Replace_Text(track, u"SectionIdx (", u"SectionIdx "),
  };
  for (std::size_t length = 8; length < track.size() - 2; ++length) {
    refused.push_back(track.substr(0, length));
  }
  Expect_Refused([](Text_View text) { Rebase_Dyntracks(text, 1, 1, No_Log); }, refused);
}

Text Mapped(Text_View name) {
  const std::map<Text, Text> transforms{{u"old.s", u"new.s"},      {u"gone.s", u" -delete-"},
                                        {u"keep2.s", u"same.s"},   {u"lost.s", u"nowhere.s"},
                                        {u"dash.s", u"-delete-"},  {u"case.s", u"Keep.s"},
                                        {u"go(ne.s", u" -delete-"}};
  const auto mapped = transforms.find(Fold_Case(name));
  return mapped == transforms.end() ? Text(name) : mapped->second;
}

Passed_World Check(Text_View text, const Log_Line& log) {
  const auto ids = Shape_Ids({{u"keep.s", 31}, {u"new.s", 77}, {u"same.s", 31}});
  return Check_Track_Objects(text, {Mapped, ids}, log);
}

TEST(Track_Objects, Each_Outcome_Of_A_Record_Writes_Logs_And_Counts_As_It_Should) {
  const struct {
    Text_View Id, Name;
    Lines Logged;
    Long Count;
  } cases[] = {
      {u"{007| 7 }", u"{| }else.s{| }", {u"Unknown shape else.s, id  7"}, 0},
      {u" 7 ", u"{lost.s| nowhere.s }", {u"Unknown shape nowhere.s, id  7"}, 0},
      {u"{30.5| 31 }", u"{| }KEEP.s{| }", {u"KEEP.s id:  30.5 ->  31"}, 1},
      {u"{| }31{| }", u"{keep2.s| same.s }", {}, 1},
      {u"{| }31{| }", u"{case.s| Keep.s }", {}, 1},
      {u"{0031| 31 }", u"{  | }keep.s{| }", {}, 0},
      {u"{| }5{| }", u"{dash.s| -delete- }", {u"Unknown shape -delete-, id  5"}, 0},
      {u"{| }31{| }", u"{| }\"keep.s\"{| }", {u"Unknown shape \"keep.s\", id  31"}, 0},
  };
  for (const auto& [id, name, logged, count] : cases) {
    const Text record =
        Concatenate({u"TrackObj ( SectionIdx (", id, u") FileName (", name, u") )"});
    Lines lines = logged;
    lines.push_back(Number_Text(count) + u" track sections has been changed");
    Expect_Changes(Check, record, count, lines);
  }
}

TEST(Track_Objects, The_Elements_Of_A_Record_Are_Read_In_Either_Order) {
  const std::pair<Text_View, Long> cases[] = {
      {u"( FileName ({old.s| new.s }) X ( \"a\" -1 2.34185e-38 ) SectionIdx ({31| 77 }) )", 1},
      {u"( FileName ({| }\"..\\..\\routes\\A\\shapes\\b.s\"{| }) SectionIdx ({| }5{| }) )", 0},
      {u"( FileName ({| }keep.s{| }) FileName (old.s) SectionIdx ({1| 31 }) )", 1},
      {u"( OldFileName (old.s) SectionIdx ({1| 31 }) FileName ({| }keep.s{| }) FileName (x) )", 1},
      {u"( Comment FileName SectionIdx ({1| 31 }) FileName ({| }keep.s{| }) )", 1},
      {u"( FileName ({| }SectionIdx.s{| }) SectionIdx ({| }1{| }) )", 0},
      {u"( SectionIdx ({| }1{| }) SectionIdx (2) FileName ({| }\"keep.s{| }) )", 0},
      {u"( SectionIdx ({| }1{| }) FileName ({| }\"a\" \"b\"{| }) X ( \" ) )", 0},
      {u"( FileName (old.s) SectionIdx ({77| 31 }) X ( TrackObj ( SectionIdx (1) "
       u"FileName ({| }keep.s{| }) ) ) )",
       1},
  };
  for (const auto& [record, count] : cases) {
    const Text world = Concatenate(
        {u"Tr_Worldfile ( \"\" TrackObj ", record, u" TrackObj ", record, u" \" FileName ( x ) )"});
    Expect_Changes(Check, world, 2 * count, std::nullopt);
  }
}

TEST(Track_Objects, A_Record_That_Cannot_Be_Read_Stays_Character_For_Character) {
  const Text good = u" TrackObj ( SectionIdx ({1| 31 }) FileName ({| }keep.s{| }) )";
  const Text left = u"Left a track object as it is, I cannot read it";
  const Text checked = u"keep.s id:  1 ->  31";
  for (const Text_View odd : {u"TrackObj ( FileName ( a.s ) )", u"TrackObj ( SectionIdx (1) )",
                              u"TrackObj ( SectionIdx )", u"TrackObj ( SectionIdx (1) FileName )",
                              u"TrackObj ( FileName (gone.s) SectionIdx (1) FileName )",
                              u"TrackObj ( FileName SectionIdx (1) )", u"TrackObj ( TrackObj )",
                              u"TrackObj ( SectionIdx ( FileName ) X ( 1 ) )",
                              u"TrackObj SectionIdx ( ( 1 ) FileName (gone.s) )",
                              u"TrackObj ( SectionIdx (1) FileName (\"a)b.s\") )",
                              u"TrackObj ( SectionIdx (1) FileName (\"x\" \"a) TrackObj ( b.s\") )",
                              u"TrackObj ( FileName (\"gone.s) \" SectionIdx (1) )"}) {
    Expect_Changes(Check, Concatenate({odd, good, odd, good}), 2,
                   Lines{left, checked, left, checked, u" 2 track sections has been changed"});
  }
}

TEST(Track_Objects, Removal_Walks_The_Record_Without_Its_Old_Id_And_Name) {
  for (const Text_View record :
       {u"( SectionIdx ( 1 ) FileName ( go(ne.s ) ( ) )",
        u"(() SectionIdx ( 1 ) FileName ( gone.s ) )",
        u"(\r\n SectionIdx ( 1 )\r\n FileName ( gone.s ) Other ( ( 1 ) 2 ) )",
        u"( () FileName (go(ne.s) X ( 1 ) SectionIdx ( 1 ) ( ) )"}) {
    Expect_Changes(Check, Concatenate({u"( a {TrackObj ", record, u"|}\r\nb )"}), 1,
                   Lines{u" 1 track sections has been changed"});
  }
}

const Own_Numbers Own{Number_Set({1900, 1901, 2.5, 3e9}), Number_Set({501, 500, 500, 0})};
const auto Shape_Id = Shape_Ids({{u"keep.s", 500}, {u"new.s", 7}});

Passed_World Rebase_World(Text_View text, const Log_Line& log) {
  return Rebase_Own_Shapes(Text(text), Own, 40, Shape_Id, log);
}

TEST(Rebase_Own_Shapes, Only_The_Digits_Of_Own_Shapes_Change) {
  const Lines two{u" 2 track objects of the route's own shapes"};
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
    Expect_Changes(Rebase_World, world, moves ? 2 : 0, moves ? two : Lines{});
  }
}

TEST(Track_Objects, What_No_Later_Text_Completes_Is_Refused_By_Both_Passes) {
  // The brackets of the last one do not balance.
  std::vector<Text> cut = {u"TrackObj ( ) TrackObj (",
                           u"TrackObj ( SectionIdx ( 1e999 ) FileName ( a.s ) )",
                           u"TrackObj ( FileName ( a.s ) SectionIdx ( 1 )"};
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
  Expect_Refused(check, {u"TrackObj ( SectionIdx ( 1 ) )", u"TrackObj ( FileName ( a.s ) )",
                         u"TrackObj ( SectionIdx ( 1 ) FileName ( gone.s )",
                         u"TrackObj ( SectionIdx ) TrackObj"});
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
    const Rebased_Database rebased = Rebase_Track_Database(database.Before, Own, 100, 40);
    EXPECT_EQ(rebased.Output, database.After) << To_Utf8(nodes);
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
  Expect_Refused([](Text_View text) { Rebase_Track_Database(Text(text), Own, 100, 40); }, refused);
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
  counter.Count_World_File(u"w.w", world + Dyntrack(u" 1900 ", u" 99 ", u"( 501 )") +
                                       Dyntrack(u" 0 ", u" 33 ", u"( -1 )"));
  counter.Count_Paths(u"tsection.dat", {1, 1901, 0});
  counter.Count_Track_Database(u"a.tdb", u"TrackDB ( TrVectorSections ( 2 1 500" + Text(Others) +
                                             u"1902 7" + Text(Others) +
                                             u") TrJunctionNode ( 0 44 0 ) )");
  const struct {
    Reference_Kind Kind;
    std::array<Long, 3> To_Catalogue_Own_Nowhere;
    std::vector<Lost_Reference> First_Lost;
  } expected[] = {
      {Reference_Kind::Track_Object, {3, 1, 4}, {{u"w.w", 9}, {u"w.w", 8.5}, {u"w.w", -1}}},
      {Reference_Kind::Dynamic_Section, {0, 1, 2}, {{u"w.w", 99}, {u"w.w", 33}}},
      {Reference_Kind::Dynamic_Shape, {0, 1, 0}, {}},
      {Reference_Kind::Path_Section, {1, 1, 1}, {{u"tsection.dat", 0}}},
      {Reference_Kind::Database_Section, {1, 0, 1}, {{u"a.tdb", 1902}}},
      {Reference_Kind::Database_Shape, {1, 1, 0}, {}},
      {Reference_Kind::Junction, {0, 0, 1}, {{u"a.tdb", 44}}},
  };
  for (const auto& [kind, numbers, first_lost] : expected) {
    const Reference_Count& count = counter.Of(kind);
    const std::array<Long, 3> found{count.To_Catalogue, count.To_Own, count.To_Nowhere};
    EXPECT_EQ(found, numbers) << static_cast<int>(kind);
    EXPECT_EQ(count.First_Lost, first_lost) << static_cast<int>(kind);
  }
}

using Whole_Route = std::array<Text, 3>;  // a local catalogue, a world file and a database

// Moves all of it; the offsets come from the local file.
Whole_Route Converted(const Whole_Route& route, Long sections, Long shapes) {
  const auto local = Rebase_Tsection(route[0], sections, shapes, No_Log);
  const auto [by_sections, by_shapes] = std::pair(local.Section_Delta, local.Shape_Delta);
  const Text world = Rebase_Dyntracks(route[1], by_sections, by_shapes, No_Log).Output;
  return {local.Output, Rebase_Own_Shapes(world, local.Own, by_shapes, Shape_Id, No_Log).Output,
          Rebase_Track_Database(route[2], local.Own, by_sections, by_shapes).Output};
}

TEST(Whole_Route, Of_The_Sample_Converts_There_And_Back) {
  const std::vector<sample::Shape> shapes = sample::Invent_Shapes(300);
  for (std::uint64_t seed = 1; seed <= 5; ++seed) {
    const sample::Random_Source random(seed);
    const auto own = sample::Invent_Dynamic_Tracks(40, 38000, 37000, random);
    const sample::World world = sample::Invent_World({u"A", shapes, own}, 60, true, random);
    sample::Track_Database database;
    database.Add_Tile(-5354, 14850, world.Track);
    const Whole_Route before{sample::Local_Catalogue(own), world.File, database.File()};
    const Whole_Route after = Converted(before, 40000, 40010);
    for (const std::size_t part : {0, 1, 2}) EXPECT_NE(after[part], before[part]);
    EXPECT_EQ(Converted(after, 38000, 37000), before) << seed;
  }
}

}  // namespace
}  // namespace rivelt
