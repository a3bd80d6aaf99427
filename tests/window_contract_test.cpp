// What every window must do, run over each back end: the whole form behind it, on a small
// installation in memory, used as a person uses it.

#include <algorithm>
#include <map>

#include "text/utf8.h"
#include "window_user.h"

namespace rivelt {
namespace {

using enum Control;

const Text Confirmation =
    Window_User::Box_Text(u"Update", 33, u"Are you sure you want to perform an update?");

Text Failure_Box(Text_View message) {
  return Window_User::Box_Text(u"Rivelt", 16, message);
}

class Window_Contract : public Window_Fixture {
 protected:
  void Fill_In_First_Row() {
    User->Press(optDynamic_1);
    User->Type(txtTrack_0, u"b.s");
    User->Pick(cmbTracks_0, u"c.s");
  }

  std::string Which_Take_Input() {
    std::string names;
    for (const Control_Row& row : Control_Table) {
      if (row.Type != Control_Type::Label && User->Takes_Input(row.Id)) {
        names += Written_Name(row) + " ";
      }
    }
    return names;
  }

  const std::string Rows =
      "Transform txtTrack(0) cmbTracks(0) txtTrack(1) cmbTracks(1) txtTrack(2) cmbTracks(2) "
      "txtTrack(3) cmbTracks(3) txtTrack(4) cmbTracks(4) ";
  const std::string Ready = "cmbRoutes optDynamic(0) optDynamic(1) ";
  const Text Open = u"&Open an installation...";
  const Text Whole_Route = u"&Whole route";
  const Text References = u"Where its &numbers lead";
  const Text To_Text = u"Convert binary files to &text";
  const Text Reason = u"Why did it &fail?";
  const Text Restore = u"Restore a &backup";
  const Text Staged_File = u"Quenby\\tmp\\w-1.w";
  const Text World_File = u"routes\\Second to none\\world\\w-1.w";
};

TEST_F(Window_Contract, Start_Fills_The_Lists_And_A_Route_With_A_Name_Enables_The_Commands) {
  Start();
  EXPECT_TRUE(User->Visible());
  EXPECT_EQ(Which_Take_Input(), Ready + "cmdSave cmdQuit txtMessages ");
  EXPECT_EQ(User->Entries(cmbRoutes), (Lines{u"", u"a branch line", u"Second to none"}));
  for (int row = 0; row < Row_Count; ++row) {
    EXPECT_EQ(User->Entries(cmbTracks(row)), (Lines{u" -delete-", u"A.s", u"b.s", u"c.s"}));
    EXPECT_EQ(User->Shown_Text(cmbTracks(row)) + User->Shown_Text(txtTrack(row)), u"");
  }
  EXPECT_EQ(User->Shown_Text(cmbRoutes), u"");
  EXPECT_TRUE(User->Selected(optDynamic_0));
  EXPECT_FALSE(User->Selected(optDynamic_1));
  EXPECT_FALSE(User->Hourglass());
  EXPECT_TRUE(Log().ends_with(u"\r\n\r\nSelect a route above for check/update\r\n"));
  User->Pick(cmbRoutes, u"a branch line");
  EXPECT_EQ(User->Shown_Text(cmbRoutes), u"a branch line");
  EXPECT_EQ(Which_Take_Input(), Ready + "cmdCheck cmdUpdate cmdSave cmdQuit txtMessages ");
  User->Pick(cmbRoutes, u"");
  EXPECT_EQ(Which_Take_Input(), Ready + "cmdSave cmdQuit txtMessages ");
}

TEST_F(Window_Contract, The_Captions_Are_Where_A_Person_Reads_Them) {
  Start();
  std::map<std::pair<int, int>, std::string> by_place;
  for (const Control_Row& row : Control_Table) {
    if (row.Parent || row.Caption.empty()) continue;
    by_place[{row.Top, row.Left}] =
        Written_Name(row) + ": " + To_Utf8(User->Shown_Text(row.Id)) + "|";
  }
  std::string captions;
  for (const auto& [place, caption] : by_place) captions += caption;
  EXPECT_EQ(captions,
            "Label1: Select route:|"
            "optDynamic(0): Check dynamic track only|optDynamic(1): Check all track "
            "sections|Transform: Transform shape|"
            "cmdCheck: &Check|cmdUpdate: &Update|cmdSave: &Save|cmdQuit: &Quit|"
            "Label2: v1.1, April 2002 - for everyone who keeps a route running|");
}

TEST_F(Window_Contract, Select_All_Sections_Enables_The_Rows_Which_Keep_Their_Content) {
  Start();
  User->Type(txtTrack_0, u"no");
  EXPECT_EQ(User->Shown_Text(txtTrack_0), u"") << "the row was disabled";
  Fill_In_First_Row();
  User->Type(txtTrack_4, u"\u00e4 long name.s");
  EXPECT_EQ(Which_Take_Input(), Ready + Rows + "cmdSave cmdQuit txtMessages ");
  User->Press(optDynamic_0);
  EXPECT_EQ(Which_Take_Input(), Ready + "cmdSave cmdQuit txtMessages ");
  EXPECT_EQ(User->Shown_Text(txtTrack_0), u"b.s");
  EXPECT_EQ(User->Shown_Text(cmbTracks_0), u"c.s");
  EXPECT_EQ(User->Shown_Text(txtTrack_4), u"\u00e4 long name.s");
}

TEST_F(Window_Contract, A_Pasted_Text_Ends_At_Its_First_Line_End) {
  Start();
  User->Press(optDynamic_1);
  int row = 0;
  for (const Text_View pasted : {u"1.s", u"1.s\n", u"1.s\r\n2.s\r\n", u"1.s\r2.s", u"1.s\n\r2.s"}) {
    User->Type(txtTrack(row), u"a");
    User->Paste(txtTrack(row), pasted);
    EXPECT_EQ(User->Seam().Read_Text(txtTrack(row)), u"a1.s") << "row " << row;
    ++row;
  }
}

TEST_F(Window_Contract, Check_Stages_What_The_Rows_Say_Under_The_Hourglass_And_Update_Asks) {
  Start_And_Pick_First();
  Fill_In_First_Row();
  bool hourglass = false;
  In_The_Middle([&] { hourglass = User->Hourglass(); });
  User->Press(cmdCheck);
  EXPECT_TRUE(hourglass);
  EXPECT_FALSE(User->Hourglass());
  EXPECT_EQ(Train.Content(Staged_File), World(u"78", u"c.s"));
  User->Pick(cmbTracks_0, u"A.s");
  User->Press(cmdCheck);
  EXPECT_EQ(Train.Content(Staged_File), World(u"77", u"A.s"));
  User->Type(txtTrack_0, u"other.s");
  User->Press(cmdCheck);
  EXPECT_EQ(Train.Staged(), Lines{});
  EXPECT_TRUE(Log().starts_with(u"Checking: Second to none, this will take some time\r\n"));
  EXPECT_EQ(User->Boxes(), Lines{});
  User->Type(txtTrack_0, u"B.S");
  const Text log = Log();
  User->Answer_With_Cancel();
  User->Press(cmdUpdate);
  EXPECT_EQ(Log(), log);
  EXPECT_EQ(Train.Content(World_File), World(u"31", u"b.s"));
  User->Press(cmdUpdate);
  EXPECT_EQ(User->Boxes(), (Lines{Confirmation, Confirmation}));
  EXPECT_TRUE(Log().ends_with(u"\r\n\r\nFinished updating \r\n"));
  EXPECT_EQ(Train.Content(World_File), World(u"77", u"A.s"));
}

TEST_F(Window_Contract, The_Menu_Says_What_Can_Be_Chosen_And_Why_A_Fatal_Error_Came) {
  Start();
  EXPECT_EQ(User->Menu(), (Lines{Open, Whole_Route}));
  User->Pick(cmbRoutes, u"Second to none");
  for (const Text mark : {u"x ", u"", u"x "}) {
    User->Choose(Whole_Route);
    EXPECT_EQ(User->Menu(), (Lines{Open, mark + Whole_Route, References, To_Text}));
  }
  EXPECT_TRUE(User->Visible());
  Train.Disk.Put_Folder(u"\\train\\Quenby");
  const auto lock = Memory_Files(Train.Disk)->Lock(u"\\train\\Quenby");
  User->Press(optDynamic_1);  // so that everything is enabled
  User->Press(cmdCheck);
  EXPECT_TRUE(Log().starts_with(u"Had problems in Do_Check!\r\n"));
  User->Choose(Whole_Route);
  EXPECT_EQ(User->Menu(), (Lines{Open, Reason}));
  User->Choose(Reason);
  EXPECT_EQ(User->Boxes(), (Lines{Failure_Box(u"Had problems checking this route!"),
                                  Window_User::Box_Text(u"Rivelt", 64, Locked_By_Another)}));
  User->Press(optDynamic_0);
  EXPECT_TRUE(User->Selected(optDynamic_1));
  EXPECT_EQ(Which_Take_Input(), "cmdQuit txtMessages ");
}

TEST_F(Window_Contract, The_Menu_Restores_A_Backup_Of_The_Picked_Route_When_Confirmed) {
  Start_And_Pick_First();
  Fill_In_First_Row();
  User->Press(cmdUpdate);
  User->Type(txtTrack_0, u"c.s");
  User->Pick(cmbTracks_0, u"A.s");
  User->Press(cmdUpdate);
  EXPECT_EQ(Train.Content(World_File), World(u"77", u"A.s"));
  User->Pick(cmbRoutes, u"a branch line");
  EXPECT_EQ(User->Menu(), (Lines{Open, Whole_Route, References, To_Text}));
  User->Pick(cmbRoutes, u"Second to none");
  const Lines times = User->Choices();
  ASSERT_EQ(times.size(), 2u);
  EXPECT_GT(times[0], times[1]) << "the newest is first";
  User->Answer_With_Cancel();
  User->Choose(Restore, times[1]);
  EXPECT_EQ(Train.Content(World_File), World(u"77", u"A.s"));
  User->Choose(Restore, times[1]);
  const Text question =
      Window_User::Box_Text(u"Restore", 33, u"Are you sure you want to restore this backup?");
  EXPECT_EQ(User->Boxes(), (Lines{Confirmation, Confirmation, question, question}));
  EXPECT_EQ(Train.Content(World_File), World(u"31", u"b.s"));
  EXPECT_EQ(Log(), u"Restoring: Second to none\r\nworld\\w-1.w\r\nFinished restoring \r\n");
  EXPECT_EQ(User->Choices().size(), 3u) << "a restore can be undone as well";
}

TEST_F(Window_Contract, Open_An_Installation_Starts_Afresh_On_A_Folder_Also_After_A_Failed_Start) {
  const Text folder = User->Folder_To_Open();
  Train.Disk.Put_File(folder + u"\\global\\tsection.dat", Small_Catalogue);
  Train.Disk.Put_File(folder + u"\\routes\\x\\x.trk", u"Name ( Elsewhere )");
  Start_And_Pick_First();
  Fill_In_First_Row();
  User->Choose(Whole_Route);
  User->Press(cmdCheck);
  User->Choose(Open);
  EXPECT_EQ(User->Shown_Text(cmbRoutes), u"Second to none") << "cancelled";
  User->Open_Folder(folder);
  User->Choose(Open);
  EXPECT_EQ(User->Entries(cmbRoutes), Lines{u"Elsewhere"});
  EXPECT_EQ(User->Entries(cmbTracks_0), (Lines{u" -delete-", u"keep.s", u"New.s"}));
  for (const Control control : {cmbRoutes, txtTrack_0, cmbTracks_0}) {
    EXPECT_EQ(User->Shown_Text(control) + User->Seam().Read_Text(control), u"");
  }
  EXPECT_TRUE(User->Selected(optDynamic_0));
  EXPECT_EQ(Which_Take_Input(), Ready + "cmdSave cmdQuit txtMessages ");
  EXPECT_TRUE(Log().ends_with(u"Select a route above for check/update\r\n"));
  EXPECT_EQ(User->Menu(), (Lines{Open, Whole_Route}));
  EXPECT_TRUE(Memory_Files(Train.Disk)->Lock(u"\\train\\Quenby")) << "no longer held";
  Train.Disk.Remove(folder + u"\\routes");
  for (int i = 0; i < 2; ++i) {
    User->Open_Folder(folder);
    User->Choose(Open);
    EXPECT_EQ(Log(), Concatenate({u"Could not read installed routes!\r\n", Standard_Line}));
  }
}

TEST_F(Window_Contract, Both_Commands_Report_A_Failure_In_A_Box_And_Go_On) {
  Start_And_Pick_First();
  User->Press(cmdCheck);
  Train.Disk.Remove(u"\\train\\Quenby");  // with the lock
  Train.Put(Staged_File, u"of another program");
  User->Press(cmdUpdate);
  Train.Disk.Remove(u"\\train\\Quenby");
  User->Press(cmdCheck);
  EXPECT_EQ(User->Boxes(), (Lines{Confirmation, Failure_Box(u"Had problems updating this route!"),
                                  Failure_Box(u"Had problems checking this route!")}));
  EXPECT_EQ(Train.Content(World_File), World(u"31", u"b.s"));
  EXPECT_FALSE(User->Hourglass());
  User->Pick(cmbRoutes, u"a branch line");
  User->Press(cmdCheck);
  EXPECT_TRUE(Log().ends_with(u"\r\nNo update needed\r\n"));
}

TEST_F(Window_Contract, Save_Writes_The_Log_Over_A_File_Unasked_And_Cancelled_Writes_Nothing) {
  Start();
  const Text path = User->File_To_Save();
  Train.Disk.Put_File(path, u"an older log");
  User->Save_As(path);
  User->Press(cmdSave);
  EXPECT_EQ(Train.Disk.Content(path), Log());
  EXPECT_EQ(Train.Disk.Find(path).Node->Bytes.substr(0, 8), To_Utf8(Log()).substr(0, 8));
  Train.Disk.Put_File(path, u"kept");
  User->Press(cmdSave);
  EXPECT_EQ(Train.Disk.Content(path), u"kept");
  EXPECT_EQ(User->Boxes(), Lines{});
  Train.Disk.Remove(path.substr(0, path.find_last_of(u"/\\")));
  User->Save_As(path);
  User->Press(cmdSave);
  EXPECT_EQ(User->Boxes(), Lines{Failure_Box(u"Could not save the log!")});
  EXPECT_EQ(Which_Take_Input(), Ready + "cmdSave cmdQuit txtMessages ");
}

TEST_F(Window_Contract, Input_In_The_Middle_Of_Start_Or_Command_Is_Dropped_And_Not_Played_Back) {
  In_The_Middle([&] {
    User->Press(optDynamic_1);
    User->Press(cmdSave);
  });
  Start_And_Pick_First();
  EXPECT_TRUE(User->Selected(optDynamic_0));
  Fill_In_First_Row();
  In_The_Middle([&] {
    User->Pick(cmbRoutes, u"a branch line");
    User->Type(txtTrack_0, u"other.s");
    User->Pick(cmbTracks_0, u"A.s");
    User->Press(optDynamic_0);
    for (const Control button : {cmdUpdate, cmdSave, cmdCheck}) User->Press(button);
    User->Choose(Whole_Route);
  });
  User->Press(cmdCheck);
  EXPECT_EQ(User->Menu(), (Lines{Open, Whole_Route, References, To_Text}));
  EXPECT_TRUE(User->Boxes().empty());
  EXPECT_EQ(User->Shown_Text(cmbRoutes), u"Second to none");
  EXPECT_EQ(User->Shown_Text(txtTrack_0), u"b.s");
  EXPECT_EQ(User->Shown_Text(cmbTracks_0), u"c.s");
  EXPECT_TRUE(User->Selected(optDynamic_1));
  EXPECT_EQ(Find_Text(2, Log(), u"Checking: "), 0);
}

TEST_F(Window_Contract,
       A_Control_That_An_Aid_Sets_Raises_Its_Event_But_Goes_Back_During_A_Command) {
  Start();
  const auto set = [&](Text_View route, Control option, Text_View shape) {
    User->Set_By_Aid(cmbRoutes, route);
    User->Set_By_Aid(option, {});
    User->Set_By_Aid(txtTrack_0, shape);
    User->Set_By_Aid(cmbTracks_0, shape);
  };
  set(u"Second to none", optDynamic_1, u"c.s");
  User->Set_By_Aid(txtTrack_0, u"");
  User->Set_By_Aid(txtTrack_0, u"b.s\r\nx");
  EXPECT_EQ(Which_Take_Input(), Ready + Rows + "cmdCheck cmdUpdate cmdSave cmdQuit txtMessages ");
  In_The_Middle([&] { set(u"a branch line", optDynamic_0, u"A.s"); });
  User->Press(cmdCheck);
  EXPECT_EQ(Train.Content(Staged_File), World(u"78", u"c.s"));
  EXPECT_TRUE(User->Selected(optDynamic_1));
  for (const auto& [control, text] :
       {std::pair{cmbRoutes, u"Second to none"}, {txtTrack_0, u"b.s"}, {cmbTracks_0, u"c.s"}}) {
    EXPECT_EQ(User->Shown_Text(control), text);
  }
  User->Set_By_Aid(cmbTracks_0, u"A.s");
  User->Press(cmdCheck);
  EXPECT_EQ(Train.Content(Staged_File), World(u"77", u"A.s"));
}

TEST_F(Window_Contract, Quit_And_Close_Take_Effect_At_Once_Or_When_The_Command_Has_Ended) {
  const std::vector<std::pair<const char*, std::function<void()>>> ways = {
      {"Quit", [&] { User->Press(cmdQuit); }}, {"closing the window", [&] { User->Close(); }}};
  for (const auto& [name, leave] : ways) {
    SCOPED_TRACE(name);
    User = Make_User();
    Start();
    leave();
    EXPECT_FALSE(User->Visible());

    User = Make_User();
    Start_And_Pick_First();
    bool still_there = false;
    In_The_Middle([&] {
      leave();
      still_there = User->Visible();
    });
    User->Press(cmdCheck);
    EXPECT_TRUE(still_there);
    EXPECT_FALSE(User->Visible());
    EXPECT_TRUE(User->Seam().Read_Text(txtMessages).ends_with(u"No update needed\r\n"));

    User = Make_User();
    In_The_Middle(leave);
    Start();
    EXPECT_FALSE(User->Visible());
  }
}

TEST_F(Window_Contract, Texts_Pass_Through_The_Log_And_The_Lists_Unchanged) {
  Start();
  Window& seam = User->Seam();
  const Text odd = u"\u00e4\u20ac \U0001F682 \xdc80 \xd800 \t tab";
  seam.Write_Log(odd + u"\r\n\r\n");
  for (const Text_View part : {u"a", u"\r\n", u"", u"b\r", u"\n"}) seam.Append_Log(part);
  EXPECT_EQ(seam.Read_Text(txtMessages), odd + u"\r\n\r\na\r\nb\r\n");
  User->Pick(cmbRoutes, u"a branch line");
  for (const Text_View entry : {Text_View(odd), Text_View(u"A")}) seam.Add_Item(cmbRoutes, entry);
  EXPECT_EQ(seam.Read_Text(cmbRoutes), u"a branch line") << "an entry came in front of it";
  User->Pick(cmbRoutes, odd);
  EXPECT_EQ(seam.Read_Text(cmbRoutes), odd);
}

TEST_F(Window_Contract, Of_More_Lines_Than_Can_Be_Read_All_Are_There_And_None_Can_Be_Typed_In) {
  Start_And_Pick_First();
  constexpr int count = 60'000;
  In_The_Middle([&] {
    for (int i = 0; i < count; ++i) {
      User->Seam().Append_Log(u"Unknown shape A1t100mStrt.s, id  12345\r\n");
      User->Seam().Yield();
    }
  });
  User->Press(cmdCheck);
  User->Type(txtMessages, u"x\b\r");
  EXPECT_GT(std::ranges::count(Log(), u'\n'), count);
  EXPECT_TRUE(Log() == User->Seam().Read_Text(txtMessages));
  User->Press(cmdCheck);
  EXPECT_EQ(Log(), User->Seam().Read_Text(txtMessages)) << "a short log after a long one";
}

}  // namespace
}  // namespace rivelt
