// The passes over the texts of a route and of the catalogue, without a window or a disk.

#include <gtest/gtest.h>

#include <map>
#include <utility>
#include <vector>

#include "catalogue/catalogue_text.h"
#include "convert/rebase_tsection.h"
#include "convert/world_passes.h"
#include "routes/route_name.h"
#include "text/letter_case.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using Lines = std::vector<Text>;

Log_Line Into(Lines& lines) {
  return [&lines](Text_View line) { lines.emplace_back(line); };
}

// A section record with its number field, as in a world file.
Text Section(Text_View number) {
  return Concatenate({u"SectionCurve ( 0 )", number, u"10 0\r\n"});
}

Text Dyntrack(Text_View first_number) {
  Text text = u"Dyntrack ( " + Section(first_number);
  for (int i = 0; i < 4; ++i) text += Section(u" 4294967295 ");
  return text + u"SectionIdx ( 40 ) )";
}

TEST(Route_Display_Name, Stands_Behind_The_First_Name_In_The_File) {
  const std::pair<Text_View, Text_View> cases[] = {
      {u"Name ( \" North Line \" )", u"North Line"},
      {u"RouteID ( x ) NAME(North (Line) )", u"North (Line"},
      {u"FileName ( x.s ) Name ( y )", u"x.s"},
      {u"a Name b ) ( c )", u"c"},
      {u"a Name b ) c", u"a Name b"},
      {u"Name ( )", u""},
      {u"Name ( \ta\r\n )", u"\ta\r\n"},
  };
  for (const auto& [source, name] : cases)
    EXPECT_EQ(Route_Display_Name(source), name) << To_Utf8(source);
  for (const Text_View source : {u"", u"Nam ( a )", u"Name ( a", u"Name a"}) {
    EXPECT_THROW(Route_Display_Name(source), Failure) << To_Utf8(source);
  }
}

TEST(Catalogue_Version, Stands_Between_Build_And_The_Next_Bracket) {
  EXPECT_EQ(Catalogue_Version(u"_INFO ( Track data Build 12a) )"), u"12a");
  EXPECT_EQ(Catalogue_Version(u"rebuild: x )"), u" x ");
  EXPECT_EQ(Catalogue_Version(u"Build.) )"), u"");
  EXPECT_EQ(Catalogue_Version(u"no mark"), std::nullopt);
  EXPECT_THROW(Catalogue_Version(u"Build)"), Failure);
  EXPECT_THROW(Catalogue_Version(u"Build 1"), Failure);
}

TEST(Read_Count, Reads_Behind_The_Keyword_And_Leaves_The_Rest) {
  Text_View rest = u"x tracksections ( 2.5\r\nTrackSection ( 0";
  EXPECT_EQ(Read_Count(rest, u"TrackSections"), 2);
  EXPECT_EQ(rest, u" 2.5\r\nTrackSection ( 0");
  rest = u"7 TrackSections";  // no "(": the whole text stays
  EXPECT_EQ(Read_Count(rest, u"TrackSections"), 7);
  for (Text_View refused : {u"TrackSection ( 1", u"TrackSections ( 2147483648"}) {
    EXPECT_THROW(Read_Count(refused, u"TrackSections"), Failure);
  }
}

TEST(Without_Comments, Brackets_Without_A_Partner_Repeat_What_Is_Before_A_Comment) {
  const Text stripped = Without_Comments(u")) TrackSections TrackShapes _SKIP )");
  EXPECT_EQ(
      stripped,
      u")) TrackSections TrackShapes ) TrackSections TrackShapes  TrackSections TrackShapes ");
  Text_View rest = stripped;
  EXPECT_EQ(Read_Count(rest, u"TrackSections"), 0);
  EXPECT_EQ(Read_Count(rest, u"TrackShapes"), 0);
}

// Records that one bracket closes, so that each has the whole rest for a name.
Text Nested_Names(int count) {
  Text text;
  for (int i = 0; i < count; ++i) text += u"TrackShape ( 1 FileName ( ";
  return text + u")";
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
      {u"TrackShape ( 1 FileName ( TrackShape ( 2 ) FileName ( x.s ) )", {{1, u"TrackShape ( 2"}}},
      {u"TrackShape ( 1 FileName ( a.s ) TrackShape FileName )", {{1, u"a.s"}}},
      {u"TrackShape ( 1", {}},
      {u"none", {}},
  };
  for (const auto& [source, found] : cases) EXPECT_EQ(Shapes_Of(source), found) << To_Utf8(source);
  EXPECT_EQ(Shapes_Of(Nested_Names(5)).size(), 5U);
  EXPECT_EQ(Shapes_Of(Nested_Names(5))[1].second,
            u"TrackShape ( 1 FileName ( TrackShape ( 1 FileName ( TrackShape ( 1 FileName (");
  for (const Text& source :
       {Text(u"TrackShape ( 3000000000 FileName ( a.s ) )"), Nested_Names(2000)}) {
    EXPECT_THROW(Shapes_Of(source), Failure) << To_Utf8(source.substr(0, 40));
  }
}

Rebased_Tsection Rebase(Text_View text, Lines& lines) {
  return Rebase_Tsection(text, 2000, 900, Into(lines));
}

TEST(Rebase_Tsection, A_Whole_File_And_The_Parts_That_One_May_Lack) {
  const struct {
    Text_View Source;
    Text_View Output;
    Long Section_Delta, Shape_Delta;
  } cases[] = {
      {u"TrackSections ( 2\r\n"
       u"TrackSection ( SectionCurve ( 1 ) 1900 0 250 )\r\n"
       u"TrackSection ( sectioncurve ( 1 ) 1901 30 250 )\r\n)\r\nSectionIdx ( 2\r\n"
       u"TrackPath ( 800 2 1900 1901 )\r\nTRACKPATH (801 x  1901)\r\nTrackPath ( 802 )\r\n)\r\n",
       u"TrackSections ( 2\r\n"
       u"TrackSection ( SectionCurve ( 1 ) 2000 0 250 )\r\n"
       u"TrackSection ( sectioncurve ( 1 ) 2001 30 250 )\r\n)\r\nSectionIdx ( 2\r\n"
       u"TrackPath ( 900 2 2000 2001 )\r\nTRACKPATH ( 901 x 100 2001 )\r\nTrackPath ( 902 "
       u")\r\n)\r\n",
       100, 100},
      {u"SectionIdx ( 1 TrackPath ( 800 1 7 ) )", u"SectionIdx ( 1 TrackPath ( 900 1 7 ) )", 0,
       100},
      {u"SectionCurve ( 1 ) 1900 0 SectionIdx (", u"SectionCurve ( 1 ) 2000 0 SectionIdx (", 100,
       0},
      {u"SectionCurve ( 1 ) 2000 0 SectionIdx ( 1 TrackPath ( 900 1 2000 )",
       u"SectionCurve ( 1 ) 2000 0 SectionIdx ( 1 TrackPath ( 900 1 2000 )", 0, 0},
      {u"SectionCurve ( 1 )  001900 0 SectionCurve ( 1 ) -150 0 SectionIdx (",
       u"SectionCurve ( 1 ) 2000 0 SectionCurve ( 1 )-50 0 SectionIdx (", 100, 0},
      {u"SectionCurve ( 1 ) &h76C 0 SectionCurve ( 1 ) &HFF 0 SectionIdx (",
       u"SectionCurve ( 1 ) 2000 0 SectionCurve ( 1 ) 355 0 SectionIdx (", 100, 0},
      {u"SectionCurve ( 1 ) 1900.5 0 SectionCurve ( 1 ) 4294967295 0 SectionIdx (",
       u"SectionCurve ( 1 ) 2000.5 0 SectionCurve ( 1 ) 4294967395 0 SectionIdx (", 100, 0},
      {u"TrackPath ( 800 ) SectionIdx ( 1 )", u"TrackPath ( 800 ) SectionIdx ( 1 )", 0, 0},
      {u"SectionIdx ( 1 TrackPath ( 800 1  3 )", u"SectionIdx ( 1 TrackPath ( 900 1 0 3 )", 0, 100},
  };
  for (const auto& [source, output, section_delta, shape_delta] : cases) {
    Lines lines;
    const Rebased_Tsection rebased = Rebase(source, lines);
    EXPECT_EQ(rebased.Output, output) << To_Utf8(source);
    EXPECT_EQ(rebased.Section_Delta, section_delta) << To_Utf8(source);
    EXPECT_EQ(rebased.Shape_Delta, shape_delta) << To_Utf8(source);
  }
}

TEST(Rebase_Tsection, Texts_Of_Another_Form_Are_Refused) {
  for (const Text_View source :
       {u"", u"SectionCurve ( 1 ) 1900 0", u"SectionIdx 1 TrackPath",
        u"SectionIdx ( 1 TrackPath 800", u"SectionIdx ( 1 TrackPath ( 800 1",
        u"SectionIdx ( 1 TrackPath (  )", u"SectionIdx ( 1 TrackPath ( -3000000000 1 )",
        u"SectionCurve 1 2000 SectionIdx (", u"SectionCurve ( 1 ) 1900",
        u"SectionCurve ( 1 ) 5 10 0 SectionIdx ( 0",
        u"SectionCurve ( 1 )      1900 0 SectionIdx ( 0",
        u"SectionCurve ( 1 ) word 1900 SectionIdx ( 0", u"SectionCurve ( 1 ) -  0 SectionIdx ( 0",
        u"SectionCurve ( 1 ) &H 0 SectionIdx ( 0", u"SectionCurve ( 1 ) &O8 0 SectionIdx ( 0",
        u"SectionCurve ( 1 ) .  0 SectionIdx ( 0", u"SectionCurve ( 1 ) &HFG 0 SectionIdx ( 0",
        u"SectionCurve ( 1 ) 1900) 0 SectionIdx ( 0",
        u"SectionCurve ( 1 ) 4294967295 0 SectionIdx ( 0"}) {
    Lines lines;
    EXPECT_THROW(Rebase(source, lines), Failure) << To_Utf8(source);
  }
}

TEST(Rebase_Dyntracks, Section_Numbers_And_References_Of_Every_Form) {
  const Text others = Section(u" 99 ") + Section(u" 4294967295 ") + Section(u" 4294967295 ") +
                      Section(u" 4294967295 ");
  const Text moved_others = Replace_Text(others, u" 99 ", u" 199 ");
  const struct {
    Text_View Section, Reference;
    Text_View New_Section, New_Reference;
  } cases[] = {
      {u" 512 0 ", u"( 40 )", u" 612 0 ", u"( 80 )"},
      {u" 512 0 ", u"(-2147483648)", u" 612 0 ", u"(-2147483608 )"},
      {u" &HFF ", u"( &H10 )", u" 355 ", u"( 56 )"},
      {u" &o17 ", u"( 1 )", u" 115 ", u"( 41 )"},
      {u"  -512 ", u"( -1 )", u"-412 ", u"( 39 )"},
      // What an editor left of a track.
      {u" 0 0.064127 ", u"( -2147483648 )", u" 0 0.064127 ", u"( -2147483648 )"},
      {u" 0 ", u"(-1)", u" 0 ", u"(-1)"},
      {u"  7  ", u"(  -1)", u"  7  ", u"(  -1)"},
      {u" 0 -2.34185e-38 ", u"(12)", u" 0 -2.34185e-38 ", u"( 52 )"},
      {u" 07 ", u"( -1 )", u" 107 ", u"( 39 )"},
  };
  for (const auto& [section, reference, new_section, new_reference] : cases) {
    Lines lines;
    const auto world = [](Text_View first_section, const Text& rest, Text_View index,
                          const Text& second) {
      return Concatenate({u"a SectionCurve ( 0 ) 99 1\r\nDYNTRACK ( Elevation ( 2.34185e-38 ) ",
                          Section(first_section), rest, u"SectionIdx ", index,
                          u" ) Y ( -1 ) SectionIdx ( 7 )", second, u" SectionCurve ( 0 ) 99 1"});
    };
    const Text source = world(section, others, reference, Dyntrack(u"  099 "));
    const Passed_World passed = Rebase_Dyntracks(source, 100, 40, Into(lines));
    const Text second = Replace_Text(Dyntrack(u" 199 "), u"40", u"80");
    EXPECT_EQ(passed.Output, world(new_section, moved_others, new_reference, second))
        << To_Utf8(source);
    EXPECT_EQ(passed.Count, 2) << To_Utf8(source);
    EXPECT_EQ(lines, Lines{u" 2 dynamic tracks"});
  }
}

TEST(Rebase_Dyntracks, A_Track_That_Is_Cut_Short_Or_Runs_Into_The_Next_Is_Refused) {
  const Text track = Dyntrack(u" 512 ");
  std::vector<Text> refused = {
      u"Dyntrack " + track,                                         // the next one's records
      Replace_Text(track, u"SectionIdx", u"SectionIndex") + track,  // the next one's reference
      Replace_Text(track, u"( 40 )", u"( 40 ") + u" Dyntrack )",
      Dyntrack(u"5 "),
      Dyntrack(u"     "),
      Dyntrack(u" 512) "),
      Dyntrack(u" &H "),
      u"Dyntrack SectionCurve ( 0 ) 0 Dyntrack " + track.substr(8),  // the next one's records
      Replace_Text(track, u"SectionIdx (", u"SectionIdx "),
  };
  for (std::size_t length = 8; length < track.size() - 2; ++length) {
    refused.push_back(track.substr(0, length));
  }
  for (const Text& source : refused) {
    Lines lines;
    EXPECT_THROW(Rebase_Dyntracks(source, 1, 1, Into(lines)), Failure) << To_Utf8(source);
  }
}

// The tables that the track object pass asks.
struct Track_Objects : testing::Test {
  Passed_World Check(Text_View text) {
    Log.clear();
    const Shape_Tables tables{[this](Text_View name) { return Mapped(name); },
                              [this](Text_View name) {
                                const auto id = Ids.find(Fold_Case(name));
                                return id == Ids.end() ? -1 : id->second;
                              }};
    return Check_Track_Objects(text, tables, Into(Log));
  }

  Text Mapped(Text_View name) {
    const auto mapped = Transforms.find(Fold_Case(name));
    return mapped == Transforms.end() ? Text(name) : mapped->second;
  }

  std::map<Text, Long> Ids{{u"keep.s", 31}, {u"new.s", 77}, {u"same.s", 31}};
  std::map<Text, Text> Transforms{{u"old.s", u"new.s"},     {u"gone.s", u" -delete-"},
                                  {u"keep2.s", u"same.s"},  {u"lost.s", u"nowhere.s"},
                                  {u"dash.s", u"-delete-"}, {u"case.s", u"Keep.s"}};
  Lines Log;
};

TEST_F(Track_Objects, Each_Outcome_Of_A_Record_Writes_Logs_And_Counts_As_It_Should) {
  const struct {
    Text_View Id, Name;
    Text_View New_Id, New_Name;
    Lines Logged;
    Long Count;
  } cases[] = {
      {u"007", u"else.s", u"7", u"else.s", {u"Unknown shape else.s, id  7"}, 0},
      {u" 7 ", u"lost.s", u"7", u"nowhere.s", {u"Unknown shape nowhere.s, id  7"}, 0},
      {u"30.5", u"KEEP.s", u"31", u"KEEP.s", {u"KEEP.s id:  30.5 ->  31"}, 1},
      {u"31", u"keep2.s", u"31", u"same.s", {}, 1},
      {u"31", u"case.s", u"31", u"Keep.s", {}, 1},
      {u"0031", u"  keep.s", u"31", u"keep.s", {}, 0},
      {u"5", u"dash.s", u"5", u"-delete-", {u"Unknown shape -delete-, id  5"}, 0},
      {u"-1", u"x(y.s", u"-1", u"x(y.s", {u"Unknown shape x(y.s, id -1"}, 0},
      {u"31", u"\"keep.s\"", u"31", u"\"keep.s\"", {u"Unknown shape \"keep.s\", id  31"}, 0}};
  for (const auto& [id, name, new_id, new_name, logged, count] : cases) {
    const Text source =
        Concatenate({u"TrackObj ( SectionIdx (", id, u") FileName (", name, u") )"});
    const Text blank = new_id[0] == u'-' ? u"" : u" ";
    Lines expected = logged;
    expected.push_back(Number_Text(count) + u" track sections has been changed");
    EXPECT_EQ(Check(source).Output, Concatenate({u"TrackObj ( SectionIdx (", blank, new_id,
                                                 u" ) FileName ( ", new_name, u" ) )"}))
        << To_Utf8(source);
    EXPECT_EQ(Log, expected) << To_Utf8(source);
  }
}

TEST_F(Track_Objects, The_Elements_Of_A_Record_Are_Read_In_Either_Order) {
  const struct {
    Text_View Source, Output;
    Long Count;
  } cases[] = {
      {u"( FileName (old.s) X ( \"a\" -1 2.34185e-38 ) SectionIdx (31) )",
       u"( FileName ( new.s ) X ( \"a\" -1 2.34185e-38 ) SectionIdx ( 77 ) )", 1},
      {u"( FileName (lost.s) SectionIdx (-1) )", u"( FileName ( nowhere.s ) SectionIdx (-1 ) )", 0},
      {u"( FileName (\"..\\..\\routes\\A\\shapes\\b.s\") SectionIdx (5) )",
       u"( FileName ( \"..\\..\\routes\\A\\shapes\\b.s\" ) SectionIdx ( 5 ) )", 0},
      {u"( FileName (keep.s) FileName (old.s) SectionIdx (1) )",
       u"( FileName ( keep.s ) FileName (old.s) SectionIdx ( 31 ) )", 1},
      {u"( OldFileName (old.s) SectionIdx (1) FileName (keep.s) FileName (old.s) )",
       u"( OldFileName (old.s) SectionIdx ( 31 ) FileName ( keep.s ) FileName (old.s) )", 1},
      {u"( Comment FileName SectionIdx (1) FileName (keep.s) )",
       u"( Comment FileName SectionIdx ( 31 ) FileName ( keep.s ) )", 1},
      {u"( FileName (SectionIdx.s) SectionIdx (1) )",
       u"( FileName ( SectionIdx.s ) SectionIdx ( 1 ) )", 0},
      {u"( SectionIdx (1) SectionIdx (2) FileName (\"keep.s) )",
       u"( SectionIdx ( 1 ) SectionIdx (2) FileName ( \"keep.s ) )", 0},
      {u"( SectionIdx (1) FileName (\"a\" \"b\") X ( \" ) )",
       u"( SectionIdx ( 1 ) FileName ( \"a\" \"b\" ) X ( \" ) )", 0},
      {u"( FileName (\"keep.s) SectionIdx (1) )", u"( FileName ( \"keep.s ) SectionIdx ( 1 ) )", 0},
      {u"( FileName (old.s) SectionIdx (77) X ( TrackObj ( SectionIdx (1) FileName (keep.s) ) ) )",
       u"( FileName (old.s) SectionIdx ( 31 ) X ( TrackObj ( SectionIdx (1) FileName ( keep.s ) ) "
       u") )",
       1},
  };
  for (const auto& [source, output, count] : cases) {
    const Passed_World passed =
        Check(Concatenate({u"Tr_Worldfile ( \"\" TrackObj ", source, u" TrackObj ", source,
                           u" \" FileName ( x ) )"}));
    EXPECT_EQ(passed.Output, Concatenate({u"Tr_Worldfile ( \"\" TrackObj ", output, u" TrackObj ",
                                          output, u" \" FileName ( x ) )"}));
    EXPECT_EQ(passed.Count, 2 * count) << To_Utf8(source);
  }
}

TEST_F(Track_Objects, A_Record_That_Cannot_Be_Read_Stays_Character_For_Character) {
  const Text good = u" TrackObj ( SectionIdx (1) FileName (keep.s) )";
  const Text checked = u" TrackObj ( SectionIdx ( 31 ) FileName ( keep.s ) )";
  for (const Text_View odd :
       {u"TrackObj ( FileName ( a.s ) )", u"TrackObj ( SectionIdx (1) )", u"TrackObj ( ( ) )",
        u"TrackObj ( SectionIdx )", u"TrackObj ( SectionIdx (1) FileName )",
        u"TrackObj ( FileName (gone.s) SectionIdx (1) FileName )",
        u"TrackObj ( FileName SectionIdx (1) )", u"TrackObj ( TrackObj )",
        u"TrackObj ( SectionIdx ( FileName ) )", u"TrackObj ( SectionIdx ( FileName ) X ( 1 ) )",
        u"TrackObj SectionIdx ( ( 1 ) FileName (gone.s) )",
        u"TrackObj ( SectionIdx (1) FileName (\"a)b.s\") )",
        u"TrackObj ( SectionIdx (1) FileName (\"x\" \"a) TrackObj ( b.s\") )",
        u"TrackObj ( FileName (\"gone.s) \" SectionIdx (1) )",
        u"TrackObj ( SectionIdx (1) FileName (\t\"a)b.s\") )", u"TrackObj SectionIdx (1) )",
        u"TrackObj ( SectionIdx FileName (gone.s) )"}) {
    const Passed_World passed = Check(Concatenate({odd, good, odd, good}));
    EXPECT_EQ(passed.Output, Concatenate({odd, checked, odd, checked})) << To_Utf8(odd);
    EXPECT_EQ(passed.Count, 2) << To_Utf8(odd);
    const Text left = u"Left a track object as it is, I cannot read it";
    EXPECT_EQ(Log, (Lines{left, u"keep.s id:  1 ->  31", left, u"keep.s id:  1 ->  31",
                          u" 2 track sections has been changed"}));
  }
}

TEST_F(Track_Objects, Removal_Walks_The_Record_Without_Its_Old_Id_And_Name) {
  Transforms[u"go(ne.s"] = u" -delete-";
  for (const Text_View record :
       {u"( SectionIdx ( 1 ) FileName ( go(ne.s ) ( ) )",
        u"(() SectionIdx ( 1 ) FileName ( gone.s ) )",
        u"(\r\n SectionIdx ( 1 )\r\n FileName ( gone.s ) Other ( ( 1 ) 2 ) )",
        u"( () FileName (go(ne.s) X ( 1 ) SectionIdx ( 1 ) ( ) )"}) {
    const Passed_World passed = Check(Concatenate({u"( a TrackObj ", record, u"\r\nb )"}));
    EXPECT_EQ(passed.Output, u"( a \r\nb )") << To_Utf8(record);
    EXPECT_EQ(passed.Count, 1) << To_Utf8(record);
    EXPECT_EQ(Log, Lines{u" 1 track sections has been changed"});
  }
}

TEST_F(Track_Objects, What_No_Later_Text_Completes_Is_Refused) {
  for (const Text_View source : {
           u"TrackObj", u"TrackObj ( SectionIdx", u"TrackObj ( SectionIdx (",
           u"TrackObj ( SectionIdx ( 1 )", u"TrackObj ( SectionIdx ( 1 ) )",
           u"TrackObj ( SectionIdx ( 1 ) FileName", u"TrackObj ( SectionIdx ( 1 ) FileName ( a.s",
           u"TrackObj ( SectionIdx ( 1 ) FileName ( gone.s )",
           u"TrackObj ( SectionIdx ( 1e999 ) FileName ( a.s ) )", u"TrackObj ( FileName ( a.s ) )",
           u"TrackObj ( SectionIdx ) TrackObj",
           u"TrackObj ( FileName ( a.s ) SectionIdx ( 1 )",  // brackets that do not balance
       }) {
    EXPECT_THROW(Check(source), Failure) << To_Utf8(source);
  }
}

}  // namespace
}  // namespace rivelt
