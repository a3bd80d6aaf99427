// What the window on Windows does beyond what every window does.

#include "windows_window_user.h"

namespace rivelt {

std::unique_ptr<Window_User> Make_User() {
  return std::make_unique<Windows_Window_User>();
}

namespace {

using enum Control;

class Windows_Window_Test : public Window_Fixture {
 protected:
  Control Focused() {
    for (const Control_Row& row : Control_Table) {
      if (Screen.Handle(row.Id) == GetFocus()) return row.Id;
    }
    return Label1;
  }

  void Key(WPARAM key) { static_cast<Windows_Window_User&>(*User).Key(Focused(), key); }

  Windows_Window& Screen = static_cast<Windows_Window_User&>(*User).Seam();
};

TEST_F(Windows_Window_Test, Every_Control_Has_Its_Place_At_The_Dpi_Of_The_Screen) {
  Start();
  const RECT suggested{10, 10, 400, 400};
  for (const LONG dpi : {96, 144, 192, 120}) {
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
      RECT place{};
      GetWindowRect(Screen.Handle(row.Id), &place);
      MapWindowPoints(nullptr, Screen.Handle(), reinterpret_cast<POINT*>(&place), 2);
      EXPECT_EQ(place.left, MulDiv(left, dpi, 1440));
      EXPECT_EQ(place.top, MulDiv(top, dpi, 1440));
      EXPECT_NEAR(place.bottom, MulDiv(top + row.Height, dpi, 1440), 1);
      const LONG visible_width = Visible_Part(row).Right - row.Left;
      EXPECT_EQ(place.right, MulDiv(left + visible_width, dpi, 1440));
    }
  }
}

TEST_F(Windows_Window_Test, The_Log_Is_Readable_And_Named_Like_All_Others_In_Every_Colour_Scheme) {
  Start();
  const HDC context = GetDC(Screen.Handle(txtMessages));
  SetTextColor(context, RGB(1, 2, 3));
  SendMessageW(Screen.Handle(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
               reinterpret_cast<LPARAM>(Screen.Handle(txtMessages)));
  EXPECT_EQ(GetTextColor(context), GetSysColor(COLOR_WINDOWTEXT));
  EXPECT_EQ(GetBkColor(context), GetSysColor(COLOR_WINDOW));
  ReleaseDC(Screen.Handle(txtMessages), context);
  for (const Control_Row& row : Control_Table) {
    if (row.Accessible_Name.empty()) continue;
    // A screen reader takes the label before a control for its name.
    wchar_t label[64] = {};
    GetWindowTextW(GetWindow(Screen.Handle(row.Id), GW_HWNDPREV), label, 64);
    EXPECT_EQ(From_Wide(label), row.Accessible_Name) << Written_Name(row);
  }
}

TEST_F(Windows_Window_Test, The_Focus_Outlives_Minimising_And_Enter_Presses_What_Has_It) {
  Start_And_Pick_First();
  User->Press(cmdSave);
  for (const int way : {SW_MINIMIZE, SW_RESTORE}) {
    ShowWindow(Screen.Handle(), way);
    Screen.Handle_Pending();
  }
  EXPECT_EQ(Focused(), cmdSave);
  User->Press(cmdCheck);
  Train.Disk.Remove(u"\\train\\Quenby");
  Key(VK_RETURN);
  EXPECT_EQ(User->Boxes().size(), 1u) << "checked once more";
  User->Press(optDynamic_1);
  Train.Disk.Remove(u"\\train\\routes");
  User->Press(cmdCheck);
  EXPECT_EQ(Focused(), cmdQuit);
  Key(VK_RETURN);
  EXPECT_FALSE(User->Visible());
}

TEST_F(Windows_Window_Test, Tab_Goes_Through_What_Takes_Input_And_Arrows_Change_The_Option) {
  Start();
  std::vector<Control> order;
  for (int i = 0; i < 6; ++i) {
    order.push_back(Focused());
    Key(VK_TAB);
  }
  EXPECT_EQ(order,
            (std::vector{cmbRoutes, optDynamic_0, cmdSave, cmdQuit, txtMessages, cmbRoutes}));
  Key(VK_DOWN);
  EXPECT_TRUE(User->Selected(optDynamic_1));
  Key(VK_TAB);
  EXPECT_EQ(Focused(), txtTrack_0);
}

TEST_F(Windows_Window_Test, Typing_In_A_List_Goes_To_The_Entry_That_Starts_So) {
  Train.Route(u"alpha");
  Start();
  Text shown;
  for (const wchar_t unit : {L'a', L'L', L'p', L'q'}) {
    PostMessageW(Screen.Handle(cmbRoutes), WM_CHAR, unit, 1);
    Screen.Handle_Pending();
    shown += Screen.Read_Text(cmbRoutes) + u"|";
  }
  EXPECT_EQ(shown, u"a branch line|alpha|alpha|alpha|") << "none starts with alpq";
  EXPECT_TRUE(User->Takes_Input(cmdCheck));
  Key(VK_DOWN);
  EXPECT_EQ(Screen.Read_Text(cmbRoutes), u"Second to none");
}

TEST_F(Windows_Window_Test, Esc_Quits_But_Closes_An_Open_List_First) {
  Start_And_Pick_First();
  SendMessageW(Screen.Handle(cmbRoutes), CB_SHOWDROPDOWN, TRUE, 0);
  for (const WPARAM key : {VK_UP, VK_ESCAPE}) Key(key);
  EXPECT_EQ(User->Shown_Text(cmbRoutes) + Screen.Read_Text(cmbRoutes),
            u"Second to noneSecond to none");
  EXPECT_TRUE(User->Visible());
  EXPECT_FALSE(SendMessageW(Screen.Handle(cmbRoutes), CB_GETDROPPEDSTATE, 0, 0));
  SetFocus(Screen.Handle(txtMessages));
  Key(VK_ESCAPE);
  EXPECT_FALSE(User->Visible());
}

TEST_F(Windows_Window_Test, The_Save_Dialog_Opens_With_The_File_Last_Saved_To) {
  Start();
  User->Save_As(User->File_To_Save());
  for (int i = 0; i < 3; ++i) User->Press(cmdSave);
  EXPECT_TRUE(static_cast<Windows_Window_User&>(*User).Offered_File.ends_with(u"rivelt-log.txt"));
}

TEST_F(Windows_Window_Test, A_Key_That_Came_Before_A_Message_Box_Does_Not_Answer_It) {
  Start_And_Pick_First();
  const Text log = Log();
  User->Answer_With_Cancel();
  SetForegroundWindow(Screen.Handle());
  // It is with the system until it is asked for, after the click.
  for (const DWORD way : {0, KEYEVENTF_KEYUP}) keybd_event(VK_RETURN, 0, way, 0);
  User->Press(cmdUpdate);
  EXPECT_EQ(User->Boxes().size(), 1u);
  EXPECT_EQ(Log(), log);
}

TEST_F(Windows_Window_Test, The_Log_Stays_Where_The_User_Has_Scrolled) {
  Start();
  const HWND box = Screen.Handle(txtMessages);
  const auto first_line = [&] { return SendMessageW(box, EM_GETFIRSTVISIBLELINE, 0, 0); };
  for (int i = 0; i < 100; ++i) Screen.Append_Log(u"line\r\n");
  EXPECT_GT(first_line(), 80) << "the newest line is in view";
  SendMessageW(box, EM_LINESCROLL, 0, -50);
  SendMessageW(box, EM_SETSEL, 3, 9);
  const LRESULT scrolled_to = first_line();
  Screen.Append_Log(u"line\r\n");
  EXPECT_EQ(first_line(), scrolled_to);
  EXPECT_EQ(SendMessageW(box, EM_GETSEL, 0, 0), MAKELONG(3, 9));
  SendMessageW(box, WM_VSCROLL, SB_BOTTOM, 0);
  Screen.Append_Log(u"last\r\n");
  EXPECT_GT(first_line(), 80);
}

}  // namespace
}  // namespace rivelt
