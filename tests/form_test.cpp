// The procedures of the form, on a disk in memory and a window without a screen.

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

#include "installation.h"
#include "sample/binary_file.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using enum Control;

class Form : public testing::Test {
 protected:
  void Start() { Start(Window, Registry_Value, Train); }
  static void Start(Memory_Window& window, Registry& registry, Installation& train) {
    window.Start(registry, [&train] { return Memory_Files(train.Disk); });
  }

  Text Log() const { return Replace_Text(Window.Log(), Line_End, u"\n"); }

  Installation Train;
  Fixed_Registry Registry_Value{"\\train"};
  Memory_Window Window;
};

TEST_F(Form, Start_Logs_The_Catalogue_And_Its_Duplicates_And_Prompts) {
  Train.Route(u"north").Global(
      u"_INFO ( Track data Build 12a) _SKIP ( TrackSections ( 1 ) )\r\n"
      u"TrackSections ( 30 TrackSection ( 1 Other ( 5 ) ) )\r\n"
      u"TrackShapes ( 20 TrackShape ( 7 FileName ( \"\xE4.s\" ) Other ( 1 ) )\r\n"
      u"TrackShape ( 8 Other ( 1 ) FileName ( b.s ) ) TrackShape ( 9 FileName ( \xC4.S ) )\r\n"
      u"TrackShape ( 7 FileName ( \xE4.s ) ) )");
  Start();
  EXPECT_EQ(Log(),
            u"Reading installed routes\nReading global\\tsection.dat version '12a'\n"
            u"Id  9 duplicate shape \xC4.S same as id  7\n"
            u"Id  7 duplicate shape \xE4.s same as id  7\n"
            u"Ids 102 - 105 are duplicates made by Kuju.\n 30 reserved track sections.\n"
            u" 20 reserved track shapes,  1 used\n\nSelect a route above for check/update\n");
  EXPECT_EQ(Window.List(cmbTracks(4)).Count(), 2u) << "one shape and the order to delete";
}

TEST_F(Form, Routes_Of_One_Name_Show_Twice_And_The_First_Folder_Keeps_It) {
  Train.Global(Small_Catalogue).Put(u"routes\\b\\b.TRK", u"Name ( Line )");
  Train.Put(u"routes\\a\\1.trk1", u"").Put(u"routes\\a\\a.trk", u"Name ( \"LINE\" )");
  Train.Put(u"routes\\a\\b.trk", u"not read").Put(u"routes\\empty\\readme.txt", u"");
  Start();
  ASSERT_EQ(Window.List(cmbRoutes).Count(), 2u);
  EXPECT_EQ(Window.List(cmbRoutes).Entry(0), u"LINE");
  EXPECT_EQ(Window.Form().Folders().Look_Up(u"Line"), u"a");
}

TEST_F(Form, Each_Failed_Start_Ends_In_Its_Message) {
  const Text_View no_routes = u"Could not read installed routes!";
  const Text_View no_sections = u"Could not read installed track sections!";
  const Text_View route = u"routes\\a\\a.trk";
  const Text_View catalogue = u"global\\tsection.dat";
  const struct {
    Text_View Message, Path;
    Text Content;
  } cases[] = {
      {no_routes, u"no routes folder", u""},
      {no_routes, route, u"Nam"},
      {no_sections, route, u"Name ( a )"},  // no catalogue
      {no_sections, catalogue, u""},
      {no_sections, catalogue, Text(500, u'\x0100')},  // a binary one
      {no_sections, catalogue, u"Build 1) _INFO ("},
  };
  for (const auto& [message, path, content] : cases) {
    Memory_Window window;
    Start(window, Registry_Value, Train.Put(path, content));
    EXPECT_EQ(window.Log(), Concatenate({message, u"\r\n", Standard_Line})) << To_Utf8(content);
  }
  Window.Start(Registry_Value, []() -> std::unique_ptr<File_System_Object> { throw Failure(); });
  EXPECT_EQ(Log(), Concatenate({u"Could not load Rivelt!\n", Standard_Line}));
}

// A registry with or without the key, and a record of how it was used.
struct Recorded_Registry : Fixed_Registry {
  explicit Recorded_Registry(const char* value)
      : Fixed_Registry(value == nullptr ? "" : value), Has_Key(value != nullptr) {}
  Long RegOpenKeyExA(Registry_Key root, std::string_view subkey, Long options, Long access,
                     Registry_Key& key) override {
    EXPECT_EQ(root, Local_Machine);
    Calls += subkey;
    return Has_Key ? Fixed_Registry::RegOpenKeyExA(root, subkey, options, access, key)
                   : Status_File_Not_Found;
  }
  Long RegQueryValueExA(Registry_Key key, std::string_view name, Long reserved, Long& type,
                        char* data, Long& size) override {
    Calls += ", " + std::string(name);
    return Fixed_Registry::RegQueryValueExA(key, name, reserved, type, data, size);
  }
  Long RegCloseKey(Registry_Key key) override {
    Calls += ", closed";
    return Fixed_Registry::RegCloseKey(key);
  }
  const bool Has_Key;
  std::string Calls;
};

TEST_F(Form, The_Root_Comes_From_The_Registry_Or_Is_The_Parent_Folder) {
  const std::pair<const char*, Text_View> cases[] = {
      {"\\train", u"\\train"}, {"\\tr\xC3\xA4in\\", u"\\tr\xE4in\\"}, {"", u""}, {nullptr, u".."}};
  for (const auto& [value, root] : cases) {
    Recorded_Registry registry(value);
    Installation train;
    train.Disk.Put_Folder(Concatenate({root, u"\\routes"}));
    train.Disk.Put_File(Concatenate({root, u"\\global\\tsection.dat"}), Small_Catalogue);
    Memory_Window window;
    Start(window, registry, train);
    EXPECT_TRUE(window.Log().ends_with(u"check/update\r\n")) << To_Utf8(root);
    const std::string key = "SOFTWARE\\Microsoft\\Microsoft Games\\Train Simulator\\1.0";
    EXPECT_EQ(registry.Calls, key + ", Path, Path, closed");
  }
}

class Small_Installation : public Form {
 protected:
  Small_Installation() {
    Train.Global(Small_Catalogue);
    Put_Small_Route(Train, u"A");
    Put_Small_Route(Train, u"B");
    Train.World(u"w-3.w", u"not in this encoding").World(u"w-4.w.bak", u"").World(u"w", u"");
    Start();
    Window.Pick(cmbRoutes, u"A");
  }

  // What is logged for route A and dynamic track only.
  const Text Checking = u"Checking: A, this will take some time\n";
  const Text Updating = u"Updating: A, this will take some time\n";
  const Text Passes =
      u"Local tsection.dat\nSectionIdx changed:  300 ->  400\nShapeIdx changed:  360 ->  500\n"
      u"Total of  1 dynamic tracks\n\nworld\\w-1.w\n 1 dynamic tracks\n\n"
      u"world\\w-2.W\n 0 dynamic tracks\n";
  const Text Two_Staged = u"\n 2 updated files are in Quenby\\tmp\n";
  const Text Look_Over = u"You may look them over before updating\n";
  const Text No_Update = u"\nNo update needed\n";
};

TEST_F(Small_Installation, Check_Stages_What_Changed_And_Update_Moves_It_Once) {
  Train.Put(u"Quenby\\tmp\\left over.w", u"").Put(u"Quenby\\tmp\\sub\\kept", u"");
  Window.Press(cmdCheck);
  EXPECT_EQ(Log(), Checking + Passes + Two_Staged + Look_Over);
  EXPECT_EQ(Train.Staged(), (Lines{u"tsection.dat", u"w-1.w"}));
  EXPECT_EQ(Train.Content(u"Quenby\\tmp\\tsection.dat"), Moved_Local);
  EXPECT_EQ(Train.Content(u"Quenby\\tmp\\w-1.w"), Small_World(u"400", u"500"));
  EXPECT_EQ(Train.Content(u"Quenby\\tmp\\sub\\kept"), u"");
  EXPECT_EQ(Train.Content(u"routes\\A\\tsection.dat"), Small_Local);

  Train.Put(u"Quenby\\tmp\\w-2.W", Train.Content(u"routes\\A\\world\\w-2.W"));  // by hand
  Window.Press(cmdCheck);
  EXPECT_EQ(Log(), Checking + u"\n 3 updated files are in Quenby\\tmp\n" + Look_Over);
  Window.Press(cmdUpdate);
  EXPECT_EQ(Log(), Updating + u"\nFinished updating \n");
  EXPECT_EQ(Train.Content(u"routes\\A\\tsection.dat"), Moved_Local);
  EXPECT_EQ(Train.Content(u"routes\\A\\world\\w-1.w"), Small_World(u"400", u"500"));
  EXPECT_EQ(Train.Content(u"routes\\B\\tsection.dat"), Small_Local);
  EXPECT_EQ(Train.Staged(), Lines{});
  EXPECT_EQ(Window.Beeps(), 3);
  Window.Press(cmdUpdate);
  EXPECT_EQ(Log(), Updating + No_Update);

  Window.Select(optDynamic_1);  // a full run finds the ids where they should be
  Window.Press(cmdCheck);
  EXPECT_EQ(Log(), Checking +
                       u"Local tsection.dat\nTotal of  1 dynamic tracks\n\nworld\\w-1.w\n"
                       u" 0 track sections has been changed\n\nworld\\w-2.W\n"
                       u"Unknown shape old.s, id  5\n 0 track sections has been changed\n" +
                       No_Update);
  Train.Put(u"routes\\A\\world\\TSECTION.DAT", u"theirs").Put(u"Quenby\\tmp\\TSECTION.DAT", u"");
  Window.Press(cmdUpdate);  // only the exact name leads to the route's own folder
  EXPECT_EQ(Train.Content(u"routes\\A\\world\\TSECTION.DAT"), u"");
  EXPECT_EQ(Train.Content(u"routes\\A\\tsection.dat"), Moved_Local);
}

TEST_F(Small_Installation, Each_Change_Of_The_Settings_Starts_A_Full_Run) {
  Window.Press(cmdCheck);
  const std::tuple<const char*, std::function<void()>, bool> cases[] = {
      {"nothing", [] {}, false},
      {"the option", [&] { Window.Select(optDynamic_1); }, true},
      {"nothing", [] {}, false},
      {"a row typed", [&] { Window.Type(txtTrack(4), u"x"); }, true},
      {"the row typed back", [&] { Window.Type(txtTrack(4), u""); }, true},
      {"an entry picked", [&] { Window.Pick(cmbTracks(0), u"New.s"); }, true},
      {"the route", [&] { Window.Pick(cmbRoutes, u"B"); }, true},
      {"another and back",
       [&] {
         for (auto to : {u"A", u"B"}) Window.Pick(cmbRoutes, to);
       },
       false},
      {"the files of the route", [&] { Train.World(u"w-9.w", u""); }, false},
  };
  for (const auto& [what, change, runs] : cases) {
    change();
    Window.Press(cmdCheck);
    EXPECT_EQ(Window.Log().find(u"Local tsection.dat") != Text::npos, runs) << what;
  }
}

// Whose controls an aid changes by messages while the program works.
struct Changed_Window : Memory_Window {
  Text Read_Text(Control control) const override {
    return Is_Changed && control == cmbRoutes ? u"B" : Memory_Window::Read_Text(control);
  }
  bool Read_Value(Control option) const override {
    return Is_Changed ? option == optDynamic_1 : Memory_Window::Read_Value(option);
  }
  void Yield() override { Is_Changed = true; }
  bool Is_Changed = false;
};

TEST_F(Form, A_Check_Works_On_The_Settings_At_Its_Start_And_Records_Those) {
  Train.Global(Small_Catalogue);
  Put_Small_Route(Train, u"A");
  Train.World(u"w-3.w", u"tr_worldfile ( TrackObj ( SectionIdx ( 5 ) FileName ( keep.s ) ) )");
  Put_Small_Route(Train, u"B");
  Train.World(u"w-3.w", Small_World(u"301", u"361"));
  Changed_Window window;
  Start(window, Registry_Value, Train);
  window.Is_Changed = false;
  window.Pick(cmbRoutes, u"A");
  window.Press(cmdCheck);
  EXPECT_EQ(Train.Staged(), (Lines{u"tsection.dat", u"w-1.w"}));
  window.Press(cmdUpdate);
  EXPECT_EQ(Train.Content(u"routes\\A\\tsection.dat"), Small_Local);
  EXPECT_EQ(Train.Content(u"routes\\B\\world\\w-3.w"), Small_World(u"401", u"501"));
}

TEST_F(Small_Installation, The_Menu_Offers_The_Newest_Backups_And_Reports_Where_Numbers_Lead) {
  Window.Press(cmdUpdate);
  const Lines update = Window.Restorable();
  const auto journal = [](Text_View time) {
    return Concatenate({u"Quenby\\backup\\A\\", time, u"\\journal.txt"});
  };
  for (int year = 2000; year < 2025; ++year) {
    const Text time = Concatenate({Trim_Text(Number_Text(year)), u"-01-01 10.00.00"});
    Train.Put(journal(time), Train.Content(journal(update.at(0))));
  }
  ASSERT_EQ(Window.Restorable().size(), 20u);
  EXPECT_EQ(Window.Restorable().front(), update[0]);
  EXPECT_EQ(Window.Restorable().back(), u"2006-01-01 10.00.00");
  Window.Choose(Menu_Entry::References);
  EXPECT_NE(Log().find(u"\nTrack objects\t"), Text::npos);
  EXPECT_EQ(Window.Beeps(), 2);
  Train.Disk.Remove(u"\\train\\routes\\A\\world");
  Window.Choose(Menu_Entry::References);
  EXPECT_EQ(Window.Boxes().back().Message, u"Could not read a file of the route!");
}

TEST_F(Small_Installation,
       Convert_To_Text_Replaces_Binary_Files_Or_None_And_Says_Which_Is_Damaged) {
  const Text place = u"World\\w-3.w";
  Train.Put(u"routes\\A\\" + place, u"");
  std::string& bytes = Train.Disk.Find(u"\\train\\routes\\A\\" + place).Node->Bytes;
  bytes = "SIMISA@@@@@@@@@@";
  Window.Choose(Menu_Entry::To_Text);
  EXPECT_EQ(Window.Boxes().back().Message, u"Had problems converting this route's files!");
  EXPECT_TRUE(Window.Form().Reason().starts_with(place + u", at byte 16"));
  bytes = sample::Binary_File(u"SIMISA@@@@@@@@@@JINX0w0t______\r\n\r\nTr_Worldfile ( )");
  for (const Text& converted : {place + u"\n 1 files converted", Text(u"No binary files")}) {
    Window.Choose(Menu_Entry::To_Text);
    EXPECT_EQ(Log(), Concatenate({u"Converting: A\n", converted, u"\nFinished converting \n"}));
  }
  EXPECT_TRUE(Memory_Files(Train.Disk)->Lock(u"\\train\\Quenby")) << "no longer held";
  EXPECT_TRUE(Train.Content(u"routes\\A\\" + place).ends_with(u"\r\nTr_Worldfile ( )\r\n"));
}

TEST_F(Small_Installation, The_Rows_Become_Transforms_By_Their_Rules) {
  const struct {
    Text_View Old, New, Staged;  // the object old.s
  } cases[] = {
      {u" OLD ", u"New.s", u"tr_worldfile ( TrackObj ( SectionIdx ( 77 ) FileName ( New.s ) ) )"},
      {u"old.s", u"keep.s", u"tr_worldfile ( TrackObj ( SectionIdx ( 31 ) FileName ( keep.s ) ) )"},
      {u"old.sd", u"New.s", u"(no such file)"},
      {u"  ", u"New.s", u"(no such file)"},
      {u"", u"New.s", u"(no such file)"},
  };
  Window.Select(optDynamic_1);
  for (const auto& [old_name, new_name, staged] : cases) {
    Window.Type(txtTrack(2), old_name);
    Window.Pick(cmbTracks(2), new_name);
    Window.Press(cmdCheck);
    EXPECT_EQ(Train.Content(u"Quenby\\tmp\\w-2.W"), staged) << To_Utf8(old_name);
  }
}

TEST_F(Small_Installation, Update_Names_What_Has_Changed_And_What_Has_Come_Since_The_Check) {
  Window.Press(cmdCheck);
  Train.Disk.Edit_In_Place(u"\\train\\routes\\A\\world\\w-1.w", Small_World(u"301", u"360"));
  Train.Put(u"routes\\A\\world\\w-9.W", u"");
  Window.Press(cmdUpdate);
  EXPECT_EQ(Log(), Updating +
                       u"\nFinished updating \n"
                       u"Had changed since the check, and is in the backup: world\\w-1.w\n"
                       u"New since the check, and not converted: world\\w-9.W\n");
}

class Whole_Conversion : public Small_Installation {
 protected:
  Whole_Conversion() {
    Train.Put(u"routes\\A\\a.trk", u"Name ( A ) FileName ( \"The Line\" )")
        .Put(u"routes\\A\\THE LINE.tdb", Small_Database(u"300", u"360"));
    Train.Put(u"routes\\A\\world\\w-5.w",
              u"Tr_Worldfile ( TrackObj ( SectionIdx ( 360 ) FileName ( own.s ) ) "
              u"TrackObj ( SectionIdx ( 77 ) FileName ( New.s ) ) )");
    Train.Disk.Remove(u"\\train\\routes\\A\\world\\w-3.w");
  }
};

TEST_F(Whole_Conversion,
       Moves_Objects_And_Databases_Of_The_Routes_Own_Numbers_With_The_Switch_Only) {
  Train.Put(u"Quenby\\tmp\\route\\left over.tdb", u"old");
  Train.Put(u"routes\\A\\other.TDB", u"").Put(u"routes\\A\\The Line.rdb", u"not of the form");
  Train.Put(u"routes\\A\\OpenRails\\tsection.dat", u"");
  Window.Press(cmdCheck);
  EXPECT_EQ(Train.Staged(), (Lines{u"tsection.dat", u"w-1.w"}));
  EXPECT_EQ(Train.Content(u"Quenby\\tmp\\route\\left over.tdb"), u"old");
  const Text with_objects = Passes + u"\nworld\\w-5.w\n 0 dynamic tracks\n";
  EXPECT_EQ(Log(), Checking + with_objects +
                       u"I cannot read the track database The Line.rdb\n"
                       u"Open Rails reads this route's own catalogue, not the global one\n"
                       u"\nStays behind:  3 numbers in track databases, 1 track objects\n"
                       u"Only converting the route as a whole moves them\n" +
                       Two_Staged + Look_Over);
  Train.Disk.Remove(u"\\train\\routes\\A\\OpenRails");
  Train.Disk.Remove(u"\\train\\routes\\A\\The Line.rdb");
  Window.Toggle_Whole_Route();
  Window.Press(cmdCheck);
  const Text whole = Checking + with_objects +
                     u" 1 track objects of the route's own shapes\n\n"
                     u"THE LINE.tdb\n 1 section numbers, 2 shape numbers\n\n"
                     u" 3 updated files are in Quenby\\tmp\n"
                     u" 1 updated databases are in Quenby\\tmp\\route\n" +
                     Look_Over;
  EXPECT_EQ(Log(), whole);
  EXPECT_EQ(Train.Disk.Names(u"\\train\\Quenby\\tmp\\route"), Lines{u"THE LINE.tdb"});
  Window.Press(cmdUpdate);
  EXPECT_EQ(Log(), Updating + u"\nFinished updating \n");
  EXPECT_EQ(Train.Content(u"routes\\A\\THE LINE.tdb"), Small_Database(u"400", u"500"));
  EXPECT_NE(Train.Content(u"routes\\A\\world\\w-5.w").find(u"SectionIdx ( 500 )"), Text::npos);
  EXPECT_EQ(Train.Disk.Names(u"\\train\\Quenby\\tmp\\route"), Lines{});

  ASSERT_EQ(Window.Restorable().size(), 1u);
  const Text update = Window.Restorable()[0];
  Window.Choose(Menu_Entry::Restore, update);
  EXPECT_EQ(Train.Content(u"routes\\A\\THE LINE.tdb"), Small_Database(u"300", u"360"));
  EXPECT_EQ(Log(),
            u"Restoring: A\nTHE LINE.tdb\ntsection.dat\nworld\\w-1.w\nworld\\w-5.w\n"
            u"Finished restoring \n");
  Window.Press(cmdCheck);
  EXPECT_EQ(Log(), whole) << "a full one";
  Train.Disk.Edit_In_Place(u"\\train\\routes\\A\\tsection.dat", u"edited");
  EXPECT_EQ(Train.Content(Concatenate({u"Quenby\\backup\\A\\", update, u"\\tsection.dat"})),
            Small_Local);
}

TEST_F(Whole_Conversion, Moves_Nothing_If_The_Local_File_Cannot_Be_Staged_Or_Is_In_Line) {
  Train.Put(u"Quenby\\tmp\\tsection.dat\\in the way", u"");
  Window.Press(cmdCheck);
  EXPECT_TRUE(Log().ends_with(No_Update)) << To_Utf8(Log());
  EXPECT_EQ(Train.Staged(), Lines{});
  Train.Disk.Remove(u"\\train\\Quenby\\tmp\\tsection.dat");
  Window.Toggle_Whole_Route();
  // The unreadable file is no failure where no pass runs over it.
  Train.Put(u"routes\\A\\tsection.dat", Moved_Local).Put(u"routes\\A\\world\\w-9.w", u"JINX0w0b");
  Window.Press(cmdCheck);
  EXPECT_TRUE(Log().starts_with(Checking) && Log().ends_with(No_Update)) << To_Utf8(Log());
  Window.Select(optDynamic_1);
  Window.Press(cmdCheck);
  EXPECT_EQ(Window.Form().Reason(), u"World\\w-9.w, at byte 0: not a binary or compressed file");
}

TEST_F(Whole_Conversion, Moves_Numbers_If_Only_One_Kind_Does_And_Tells_Which_Get_Mixed) {
  // Only the sections move.
  Train.Put(u"routes\\A\\tsection.dat",
            u"SectionCurve ( 0 ) 300 10 SectionIdx ( 1 TrackPath ( 500 1 300 )");
  Window.Toggle_Whole_Route();
  Window.Press(cmdCheck);
  EXPECT_NE(Log().find(u"\n 1 section numbers, 0 shape numbers\n"), Text::npos) << To_Utf8(Log());

  // Only the shapes move. The database refers to 500, which nobody declares.
  Train.Put(u"routes\\A\\tsection.dat",
            u"SectionCurve ( 0 ) 400 10 SectionIdx ( 1 TrackPath ( 31 1 400 )");
  Train.Put(u"routes\\A\\THE LINE.tdb", Small_Database(u"300", u"500"));
  Train.Put(u"routes\\A\\world\\w-1.w",
            u"Tr_Worldfile ( TrackObj ( SectionIdx ( 31 ) FileName ( a.s ) ) "
            u"TrackObj ( SectionIdx ( 31 ) FileName ( keep.s ) ) )");
  Window.Select(optDynamic_1);
  Window.Press(cmdCheck);
  const Text careful =
      u"Careful:  2 undeclared numbers will lead to the moved track\n"
      u"Careful:  1 track objects have a number of the catalogue that is the route's own, too\n";
  EXPECT_NE(Log().find(careful), Text::npos) << To_Utf8(Log());
  EXPECT_NE(Train.Content(u"Quenby\\tmp\\w-1.w").find(u"( 500 ) FileName ( a.s )"), Text::npos);
  EXPECT_EQ(Window.Form().Findings().Unknown_Objects, 3);
  EXPECT_EQ(Window.Form().Findings().Unknown_Shapes.size(), 3u);
}

TEST_F(Whole_Conversion, What_Stops_The_Program_Moves_Nothing) {
  const struct {
    Text_View Message, Path, Content;
    Text_View Second_Row = u"";
  } cases[] = {
      {u"Had problems in Do_Check!", u"a.txt", u"", u" A.S"},
      {u"Had problems reading route w-files!", u"world\\w-2.w", u"Tr_Worldfile ( Dyntrack ( "},
      {u"Had problems reading the track database!", u"THE LINE.tdb",
       u"TrackDB ( TrVectorSections ( 1 7 ) )"},
      {u"Had problems reading route w-files!", u"world\\w-9.w", u"JINX0w0b"},
      {u"No track database!", u"a.trk", u"Name ( A ) FileName ( neither )"},
      {u"Had problems reading the route's tsection.dat!", u"tsection.dat", u"in another encoding"},
      {u"This route has a catalogue of its own in OpenRails!", u"OpenRails\\tsection.dat", u""},
  };
  Train.Put(u"routes\\A\\other.tdb", u"");
  for (const auto& [message, path, content, second_row] : cases) {
    Installation train(Train);
    Memory_Window window;
    Start(window, Registry_Value, train);
    window.Pick(cmbRoutes, u"A");
    window.Select(optDynamic_1);
    window.Toggle_Whole_Route();
    for (const int row : {0, 1}) {
      window.Type(txtTrack(row), row == 0 ? u"a" : second_row);
      window.Pick(cmbTracks(row), u"New.s");
    }
    train.Put(Concatenate({u"routes\\A\\", path}), content);
    window.Press(cmdUpdate);
    EXPECT_TRUE(window.Log().starts_with(Concatenate({message, u"\r\n", Standard_Line})))
        << To_Utf8(window.Log());
    EXPECT_NE(train.Content(u"routes\\A\\tsection.dat"), Moved_Local) << To_Utf8(message);
  }
}

// Each update fails between its two files: a folder is in the place of the second.
TEST_F(Small_Installation,
       A_Start_Rolls_Back_Each_Route_On_Its_Own_And_One_That_Fails_Holds_Up_None) {
  Train.Route(u"B").World(u"w-5.w", Small_World(u"300", u"360"));
  const Text backups = u"\\train\\Quenby\\backup\\";
  for (const Text_View route : {u"A", u"B"}) {
    Window.Pick(cmbRoutes, route);
    Window.Press(cmdCheck);
    const Text second = Concatenate({u"\\train\\routes\\", route, u"\\world\\w-1.w"});
    Train.Disk.Remove(second);
    Train.Disk.Put_Folder(second);
    Window.Press(cmdUpdate);
    EXPECT_EQ(Train.Content(Concatenate({u"routes\\", route, u"\\tsection.dat"})), Moved_Local);
    Train.Disk.Remove(second);
    // Or the next check rolls it back.
    if (route == u"A") Train.Disk.Rename(backups + u"A", u"hidden");
  }
  Train.Disk.Rename(backups + u"hidden", u"A");
  Train.Disk.Remove(u"\\train\\routes\\A\\world");
  Train.Disk.Edit_In_Place(u"\\train\\routes\\B\\world\\w-5.w", u"edited");
  Train.Put(u"routes\\B\\world\\.rivelt-1", u"");
  Memory_Window second;
  Start(second, Registry_Value, Train);
  EXPECT_EQ(second.Log().find(u"nfinished update"), Text::npos) << "the first one is still at work";
  Train.Disk.Locked_Folders->clear();

  Start();
  const Text rolled_back =
      u"Could not roll back an unfinished update: A\nRolled back an unfinished update: B\n\nSelect";
  EXPECT_NE(Log().find(rolled_back), Text::npos) << To_Utf8(Log());
  EXPECT_TRUE(Train.Disk.Locked_Folders->empty());
  EXPECT_EQ(Train.Content(u"routes\\B\\tsection.dat"), Small_Local);
  EXPECT_EQ(Train.Content(u"routes\\B\\world\\.rivelt-1"), u"(no such file)");
  EXPECT_EQ(Train.Content(u"routes\\B\\world\\w-5.w"), u"edited");

  Window.Pick(cmbRoutes, u"A");
  Window.Press(cmdCheck);
  EXPECT_TRUE(Log().starts_with(u"Had problems in Do_Check!\n"));
}

TEST_F(Small_Installation, Routes_Without_A_Local_File_Or_In_Another_Form_Keep_Their_Ids) {
  Window.Pick(cmbRoutes, u"B");
  Train.Route(u"B").Local(u"SectionCurve ( 0 ) 300 10 no index");
  Window.Press(cmdCheck);
  const Text world =
      u"\nworld\\w-1.w\n\nworld\\w-2.W\n\nworld\\w-3.w\n"
      u"file is binary, please convert to text with ffedit\n";
  const Text checking = u"Checking: B, this will take some time\n";
  const Text no_file = u"No tsection.dat, seems like this route does not use dynamic tracks.\n";
  EXPECT_EQ(Log(), checking + u"Local tsection.dat\nSectionIdx changed:  300 ->  400\n" + no_file +
                       world + No_Update);
  EXPECT_EQ(Window.Form().Reason(), u"B\\tsection.dat, line 1: no \"SectionIdx\"");
  Train.Disk.Remove(u"\\train\\routes\\B\\tsection.dat");
  for (const Text_View route : {u"A", u"B"}) {
    Window.Pick(cmbRoutes, route);
    Window.Press(cmdCheck);
  }
  EXPECT_EQ(Log(), checking + no_file + world + No_Update);
}

}  // namespace
}  // namespace rivelt
