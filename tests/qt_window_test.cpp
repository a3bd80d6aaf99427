// What is special to the window on Linux: its look and measures, the keyboard, and input that comes
// as native events in the middle of a command.

#include "platform/qt/qt_application.h"
#include "qt_window_user.h"

namespace rivelt {

std::unique_ptr<Window_User> Make_User() {
  return std::make_unique<Qt_Window_User>();
}

namespace {

using enum Control;

class Qt_Window_Test : public Window_Fixture {
 protected:
  QComboBox& List(Control control) { return static_cast<QComboBox&>(Screen.Widget(control)); }

  // As native events, which the system queues and the window hands on.
  void Native_Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    Qt_User.Activate();
    QTest::keyClick(Form.windowHandle(), key, modifiers);
  }

  static void Turn_Wheel(QWidget& widget, int eighths_of_a_degree) {
    QWheelEvent wheel(QPointF(9, 9), widget.mapToGlobal(QPointF(9, 9)), {},
                      {0, eighths_of_a_degree}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&widget, &wheel);
  }

  static std::string Focus() {
    const QWidget* widget = QApplication::focusWidget();
    return widget == nullptr ? "none" : widget->objectName().toStdString();
  }

  Qt_Window_User& Qt_User = static_cast<Qt_Window_User&>(*User);
  Qt_Window& Screen = Qt_User.Screen;
  QWidget& Form = Screen.Form_Widget();
  Log_View& Log_Box = static_cast<Log_View&>(Screen.Widget(txtMessages));
};

TEST_F(Qt_Window_Test, The_Form_Has_Its_Size_Caption_And_Icon_And_Every_Control_Its_Place) {
  Start();
  EXPECT_EQ(Form.minimumSize(), Form.maximumSize());
  EXPECT_EQ(Screen.Client_Widget().size(), QSize(383, 440));
  EXPECT_EQ(Form.windowTitle(), "Rivelt");
  EXPECT_EQ(Form.windowFlags() & (Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
            Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
  EXPECT_EQ(Form.windowIcon().availableSizes(), QList{QSize(32, 32)});
  for (const Control_Row& row : Control_Table) {
    const QWidget& widget = Screen.Widget(row.Id);
    const QRect place(row.Left / 15, row.Top / 15, row.Width / 15, row.Height / 15);
    EXPECT_EQ(widget.geometry(), place) << Written_Name(row);
    EXPECT_EQ(widget.accessibleName(), To_Qt(row.Accessible_Name)) << Written_Name(row);
  }
}

TEST_F(Qt_Window_Test, No_Text_Is_Cut_Off_With_Any_Desktop_Font) {
  const QFont usual = QApplication::font();
  for (const char* family : {"DejaVu Sans", "Liberation Sans", "Noto Mono"}) {
    for (const int points : {8, 10, 14, 24}) {
      QApplication::setFont(QFont(QLatin1String(family), points));
      const Qt_Window window;
      for (const Control_Row& row : Control_Table) {
        if (row.Type == Control_Type::Log_Text_Box) continue;
        SCOPED_TRACE(testing::Message() << family << " " << points << " " << Written_Name(row));
        const QWidget& widget = window.Widget(row.Id);
        const QFontMetricsF metrics(widget.font());
        const QRect space = Text_Space(widget, row);
        EXPECT_TRUE(widget.rect().contains(space));
        EXPECT_LE(metrics.height(), space.height());
        EXPECT_LE(metrics.horizontalAdvance(To_Qt(row.Caption).remove(u'&')), space.width());
        EXPECT_GE(metrics.height(), 8) << "too small to read";
      }
    }
  }
  QApplication::setFont(usual);
}

TEST_F(Qt_Window_Test, Keys_Alone_Can_Use_The_Form_And_Tab_Goes_In_The_Order_Of_The_Table) {
  Start();
  EXPECT_EQ(Focus(), "cmbRoutes");
  Native_Key(Qt::Key_S);  // typing jumps to the entry
  EXPECT_EQ(User->Shown_Text(cmbRoutes), u"Second to none");
  Native_Key(Qt::Key_Up);
  EXPECT_EQ(User->Shown_Text(cmbRoutes), u"a branch line");
  Native_Key(Qt::Key_Tab);
  Native_Key(Qt::Key_Right);
  EXPECT_TRUE(User->Selected(optDynamic_1));
  std::string order;
  do {
    order += Focus() + " ";
    Native_Key(Qt::Key_Tab);
  } while (Focus() != "optDynamic(1)" && order.size() < 400);
  EXPECT_EQ(order,
            "optDynamic(1) txtTrack(0) cmbTracks(0) txtTrack(1) cmbTracks(1) txtTrack(2) "
            "cmbTracks(2) txtTrack(3) cmbTracks(3) txtTrack(4) cmbTracks(4) cmdCheck cmdUpdate "
            "cmdSave cmdQuit txtMessages cmbRoutes ");
  Native_Key(Qt::Key_C, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Log().ends_with(u"No update needed\r\n"); }));
  Native_Key(Qt::Key_U, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return User->Boxes().size() == 1; }));
  Native_Key(Qt::Key_Q, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !User->Visible(); }));
}

TEST_F(Qt_Window_Test, Enter_Presses_The_Button_With_The_Focus_And_Escape_Presses_Quit) {
  Start();
  Native_Key(Qt::Key_Return);
  EXPECT_EQ(Qt_User.Save_Dialogs, 0);
  Screen.Widget(cmdSave).setFocus();
  Native_Key(Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Qt_User.Save_Dialogs == 1; }));
  Screen.Widget(cmbRoutes).setFocus();
  Native_Key(Qt::Key_Down, Qt::AltModifier);
  EXPECT_TRUE(List(cmbRoutes).view()->isVisible());
  Native_Key(Qt::Key_Escape);
  EXPECT_FALSE(List(cmbRoutes).view()->isVisible());
  EXPECT_TRUE(User->Visible()) << "it only closes the list";
  Native_Key(Qt::Key_Escape);
  EXPECT_FALSE(User->Visible());
}

TEST_F(Qt_Window_Test, The_Save_Dialog_Opens_With_The_File_Last_Saved_To) {
  Start();
  User->Save_As(User->File_To_Save());
  for (int i = 0; i < 3; ++i) User->Press(cmdSave);
  EXPECT_EQ(Qt_User.Offered_File, "rivelt-log.txt");
}

TEST_F(Qt_Window_Test, Each_Option_Takes_The_Clicks_On_What_Is_Seen_Of_It) {
  Start();
  const std::pair<int, Control> places[] = {{3100, optDynamic_1},  // in the box of both
                                            {2700, optDynamic_0},  // the end of its caption
                                            {3500, optDynamic_1}};
  for (const auto& [twips, option] : places) {
    Qt_User.Click(Screen.Client_Widget(), QPoint(twips / 15, 600 / 15));
    EXPECT_TRUE(User->Selected(option)) << twips;
  }
}

TEST_F(Qt_Window_Test, Keys_And_Clicks_In_The_Middle_Of_A_Command_Go_Nowhere_And_Escape_Ends_It) {
  Start_And_Pick_First();
  User->Press(optDynamic_1);
  In_The_Middle([&] {
    const std::string focus_before = Focus();
    User->Press(txtTrack_0);
    EXPECT_EQ(Focus(), focus_before);
    for (const auto key : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_X, Qt::Key_Space, Qt::Key_Return}) {
      Native_Key(key);
    }
    for (const auto key : {Qt::Key_C, Qt::Key_U, Qt::Key_S, Qt::Key_R}) {
      Native_Key(key, Qt::AltModifier);
    }
    Turn_Wheel(List(cmbRoutes), -120);
    Screen.Widget(txtTrack_0).setFocus();
    Native_Key(Qt::Key_X);
    // A click that waits in the queue when the command ends.
    QWidget& update = Screen.Widget(cmdUpdate);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QCoreApplication::postEvent(
          &update, new QMouseEvent(type, QPointF(8, 8), update.mapToGlobal(QPointF(8, 8)),
                                   Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    }
  });
  User->Press(cmdCheck);
  QTest::qWait(260);  // a button pressed by its Alt key would come now
  EXPECT_EQ(User->Boxes(), Lines{});
  EXPECT_EQ(Qt_User.Save_Dialogs, 0);
  EXPECT_EQ(User->Shown_Text(cmbRoutes), u"Second to none");
  EXPECT_TRUE(User->Selected(optDynamic_1));
  EXPECT_EQ(User->Shown_Text(txtTrack_0) + User->Shown_Text(cmbTracks_0), u"");
  User->Press(optDynamic_0);
  In_The_Middle([&] { Native_Key(Qt::Key_Escape); });
  User->Press(cmdCheck);
  EXPECT_FALSE(User->Visible());
}

TEST_F(Qt_Window_Test, The_Log_Follows_Its_End_Until_The_User_Scrolls_And_Can_Be_Copied) {
  const auto append = [&](int count) {
    for (int i = 0; i < count; ++i) Screen.Append_Log(u"line\r\n");
  };
  In_The_Middle([&] { append(10'000); });
  Start_And_Pick_First();
  EXPECT_EQ(Log(), Screen.Read_Text(txtMessages));
  QScrollBar& bar = *Log_Box.verticalScrollBar();
  EXPECT_EQ(bar.value(), bar.maximum());
  In_The_Middle([&] {
    append(100);
    QTest::qWait(260);
    Screen.Yield();
    EXPECT_GT(bar.maximum(), 50);
    EXPECT_EQ(bar.value(), bar.maximum());
    Turn_Wheel(*Log_Box.viewport(), 1200);
  });
  User->Press(cmdCheck);
  EXPECT_LT(bar.value(), bar.maximum()) << "the user reads further up";
  Log_Box.setFocus();
  Native_Key(Qt::Key_A, Qt::ControlModifier);
  Native_Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(From_Qt(QApplication::clipboard()->text().replace(u"\n"_qs, u"\r\n"_qs)), Log());
}

TEST_F(Qt_Window_Test, The_Five_Lists_Hold_The_Shapes_Once_And_Open_As_Wide_As_The_Longest) {
  const QString longest = u"A_name_of_a_track_shape_that_is_far_wider_than_its_list.s"_qs;
  Start();
  Screen.Add_Item(cmbTracks_0, From_Qt(longest));
  User->Press(optDynamic_1);
  QComboBox& list = List(cmbTracks_3);
  for (int row = 0; row < Row_Count; ++row) EXPECT_EQ(List(cmbTracks(row)).model(), list.model());
  list.showPopup();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(list.view()->window()));
  EXPECT_GT(list.view()->viewport()->width(),
            QFontMetrics(list.view()->font()).horizontalAdvance(longest));
}

}  // namespace
}  // namespace rivelt

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  rivelt::Prepare_Qt();
  return RUN_ALL_TESTS();
}
