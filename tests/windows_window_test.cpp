// What the window on Windows does beyond what every window does.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/memory/fixed_registry.h"
#include "platform/memory/memory_files.h"
#include "windows_window_user.h"

namespace rivelt {
namespace {

using enum Control;

class Windows_Window_Test : public testing::Test {
 protected:
  void Start() {
    Disk.Put_File(u"\\train\\global\\tsection.dat",
                  u"TrackSections ( 40000 ) TrackShapes ( 40000 "
                  u"TrackShape ( 0 FileName ( a0t.s ) ) )");
    for (const Text name : {u"Alder", u"alpha", u"Beech"}) {
      Disk.Put_File(u"\\train\\routes\\" + name + u"\\r.trk", u"Name ( \"" + name + u"\" )");
    }
    User.Start(System_Registry, [this] { return std::make_unique<Memory_Files>(Disk); });
  }

  RECT Place(Control control) {
    RECT area{};
    GetWindowRect(Screen.Handle(control), &area);
    MapWindowPoints(nullptr, Screen.Handle(), reinterpret_cast<POINT*>(&area), 2);
    return area;
  }

  Control Focused() {
    for (const Control_Row& row : Control_Table) {
      if (Screen.Handle(row.Id) == GetFocus()) return row.Id;
    }
    return Label1;
  }

  Memory_Disk Disk;
  Fixed_Registry System_Registry{"\\train"};
  Windows_Window_User User;
  Windows_Window& Screen = User.Seam();
};

TEST_F(Windows_Window_Test, Every_Control_Has_Its_Place_At_The_Dpi_Of_The_Screen) {
  Start();
  for (const LONG dpi : {96, 144, 192, 120}) {
    RECT suggested{10, 10, 400, 400};
    SendMessageW(Screen.Handle(), WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
                 reinterpret_cast<LPARAM>(&suggested));
    RECT client{};
    GetClientRect(Screen.Handle(), &client);
    EXPECT_EQ(client.right, MulDiv(Client_Width, dpi, 1440));
    EXPECT_EQ(client.bottom, MulDiv(Client_Height, dpi, 1440));
    for (const Control_Row& row : Control_Table) {
      SCOPED_TRACE(Written_Name(row) + " at " + std::to_string(dpi));
      const LONG left = row.Left + (row.Parent ? 120 : 0);
      const LONG top = row.Top + (row.Parent ? 840 : 0);
      const RECT place = Place(row.Id);
      EXPECT_EQ(place.left, MulDiv(left, dpi, 1440));
      EXPECT_EQ(place.top, MulDiv(top, dpi, 1440));
      EXPECT_NEAR(place.bottom, MulDiv(top + row.Height, dpi, 1440), 1);
      const LONG visible_width = Visible_Part(row).Right - row.Left;
      EXPECT_EQ(place.right, MulDiv(left + visible_width, dpi, 1440));
    }
  }
}

TEST_F(Windows_Window_Test, Tab_Goes_Through_What_Takes_Input_And_Arrows_Change_The_Option) {
  Start();
  std::vector<Control> order;
  for (int i = 0; i < 6; ++i) {
    order.push_back(Focused());
    User.Key(Focused(), VK_TAB);
  }
  EXPECT_EQ(order,
            (std::vector{cmbRoutes, optDynamic_0, cmdSave, cmdQuit, txtMessages, cmbRoutes}));
  EXPECT_EQ(Focused(), optDynamic_0);
  User.Key(optDynamic_0, VK_DOWN);
  EXPECT_EQ(Focused(), optDynamic_1);
  EXPECT_TRUE(User.Selected(optDynamic_1));
  EXPECT_TRUE(User.Takes_Input(txtTrack_0));
  User.Key(optDynamic_1, VK_TAB);
  EXPECT_EQ(Focused(), txtTrack_0);
}

TEST_F(Windows_Window_Test, Typing_In_A_List_Goes_To_The_Entry_That_Starts_So) {
  Start();
  const auto type = [&](wchar_t unit) {
    PostMessageW(Screen.Handle(cmbRoutes), WM_CHAR, unit, 1);
    Screen.Handle_Pending();
    return Screen.Read_Text(cmbRoutes);
  };
  EXPECT_EQ(type(L'a'), u"Alder");
  EXPECT_EQ(type(L'L'), u"Alder");
  EXPECT_EQ(type(L'p'), u"alpha");
  EXPECT_EQ(type(L'q'), u"alpha") << "no entry starts so";
  EXPECT_TRUE(User.Takes_Input(cmdCheck));
  User.Key(cmbRoutes, VK_DOWN);
  EXPECT_EQ(Screen.Read_Text(cmbRoutes), u"Beech");
}

TEST_F(Windows_Window_Test, Esc_Quits_But_Closes_An_Open_List_First) {
  Start();
  SendMessageW(Screen.Handle(cmbRoutes), CB_SHOWDROPDOWN, TRUE, 0);
  User.Key(cmbRoutes, VK_ESCAPE);
  EXPECT_TRUE(User.Visible());
  EXPECT_FALSE(SendMessageW(Screen.Handle(cmbRoutes), CB_GETDROPPEDSTATE, 0, 0));
  User.Key(txtMessages, VK_ESCAPE);
  EXPECT_FALSE(User.Visible());
}

TEST_F(Windows_Window_Test, A_Key_That_Came_Before_A_Message_Box_Does_Not_Answer_It) {
  Start();
  User.Pick(cmbRoutes, u"alpha");
  const Text log = User.Shown_Text(txtMessages);
  User.Answer_With_Cancel();
  SetForegroundWindow(Screen.Handle());
  // It is with the system until it is asked for, after the click.
  for (const DWORD way : {0, KEYEVENTF_KEYUP}) keybd_event(VK_RETURN, 0, way, 0);
  User.Press(cmdUpdate);
  EXPECT_EQ(User.Boxes().size(), 1u);
  EXPECT_EQ(User.Shown_Text(txtMessages), log);
}

TEST_F(Windows_Window_Test, The_Log_Takes_No_Typing_And_Stays_Where_The_User_Has_Scrolled) {
  Start();
  const Text log = User.Shown_Text(txtMessages);
  for (const wchar_t unit : {L'x', L'\b', L'\r', L'\t'}) {
    PostMessageW(Screen.Handle(txtMessages), WM_CHAR, unit, 1);
  }
  Screen.Handle_Pending();
  EXPECT_EQ(User.Shown_Text(txtMessages), log);
  const HWND box = Screen.Handle(txtMessages);
  const auto first_line = [&] { return SendMessageW(box, EM_GETFIRSTVISIBLELINE, 0, 0); };
  for (int i = 0; i < 100; ++i) Screen.Append_Log(u"line\r\n");
  EXPECT_GT(first_line(), 80) << "the newest line is in view";
  SendMessageW(box, EM_LINESCROLL, 0, -50);
  SendMessageW(box, EM_SETSEL, 3, 9);
  const LRESULT scrolled_to = first_line();
  for (int i = 0; i < 10; ++i) Screen.Append_Log(u"line\r\n");
  EXPECT_EQ(first_line(), scrolled_to);
  EXPECT_EQ(SendMessageW(box, EM_GETSEL, 0, 0), MAKELONG(3, 9));
  SendMessageW(box, WM_VSCROLL, SB_BOTTOM, 0);
  Screen.Append_Log(u"last\r\n");
  EXPECT_GT(first_line(), 80);
}

TEST_F(Windows_Window_Test, Two_Hundred_Thousand_Lines_Of_Log_All_Show) {
  Start();
  Screen.Write_Log(u"");
  // In the middle of a command, where a line does not reach the screen at once.
  Disk.On_Next_Read = [&] {
    for (int i = 0; i < 200'000; ++i) {
      Screen.Append_Log(u" 1 track sections has been changed\r\n");
      Screen.Yield();
    }
  };
  Disk.Put_File(u"\\train\\routes\\alpha\\world\\w-1.w", u"Tr_Worldfile ( )");
  Disk.Put_File(u"\\train\\routes\\alpha\\tsection.dat", u"SectionCurve ( ) TrackPath ( )");
  User.Pick(cmbRoutes, u"alpha");
  User.Press(cmdCheck);
  EXPECT_GT(SendMessageW(Screen.Handle(txtMessages), EM_GETLINECOUNT, 0, 0), 200'000);
  EXPECT_EQ(User.Shown_Text(txtMessages), Screen.Read_Text(txtMessages));
}

}  // namespace
}  // namespace rivelt
