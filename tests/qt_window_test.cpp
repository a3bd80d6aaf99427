// What is special to the window on Linux: its look and measures, the keyboard, and input that comes
// as native events in the middle of a command.

#include <gtest/gtest.h>

#include <QClipboard>
#include <QFontMetricsF>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTemporaryFile>
#include <QWheelEvent>
#include <functional>

#include "platform/memory/fixed_registry.h"
#include "platform/memory/memory_files.h"
#include "qt_window_user.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

using enum Control;

constexpr Text_View Long_Name = u"A_name_of_a_track_shape_that_is_far_wider_than_its_list.s";

class Qt_Window_Test : public testing::Test {
 protected:
  Qt_Window_Test() {
    Disk.Put_File(
        u"\\train\\global\\tsection.dat",
        Concatenate({u"TrackSections ( 400 ) TrackShapes ( 500 TrackShape ( 1 FileName ( ",
                     Long_Name, u" ) ) TrackShape ( 2 FileName ( beta.s ) ) ",
                     u"TrackShape ( 3 FileName ( bridge.s ) ) ",
                     u"TrackShape ( 4 FileName ( c.s ) ) )"}));
    Disk.Put_File(u"\\train\\routes\\one\\one.trk", u"Name ( one )");
    Disk.Put_File(u"\\train\\routes\\two\\two.trk", u"Name ( two )");
    Disk.Put_File(u"\\train\\routes\\one\\world\\w.w",
                  u"Tr_Worldfile ( TrackObj ( SectionIdx ( 9 ) FileName ( c.s ) ) )");
  }

  void Start() {
    User.Start(System_Registry, [this] { return std::make_unique<Memory_Files>(Disk); });
  }

  void In_The_Middle(std::function<void()> action) { Disk.On_Next_Read = std::move(action); }

  QWidget& Form() { return User.Screen.Form_Widget(); }
  QWidget& Widget(Control control) { return User.Screen.Widget(control); }
  QComboBox& List(Control control) { return static_cast<QComboBox&>(Widget(control)); }
  QPlainTextEdit& Log() { return static_cast<QPlainTextEdit&>(Widget(txtMessages)); }

  // As native events, which the system queues and the window hands on.
  void Native_Click(Control control) {
    const QPoint place = Widget(control).mapTo(&Form(), QPoint(8, 8));
    QTest::mouseClick(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
  }
  void Native_Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    User.Activate();
    QTest::keyClick(Form().windowHandle(), key, modifiers);
  }

  std::string Focus() const {
    const QWidget* widget = QApplication::focusWidget();
    return widget == nullptr ? "none" : widget->objectName().toStdString();
  }

  Memory_Disk Disk;
  Fixed_Registry System_Registry{"\\train"};
  Qt_Window_User User;
};

TEST_F(Qt_Window_Test, The_Form_Has_Its_Size_Caption_And_Icon_And_Every_Control_Its_Place) {
  Start();
  EXPECT_EQ(Form().size(), QSize(383, 440));
  EXPECT_EQ(Form().minimumSize(), Form().maximumSize()) << "it cannot be resized";
  EXPECT_EQ(Form().windowTitle(), "Rivelt");
  EXPECT_TRUE(
      Form().windowFlags().testFlags(Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint));
  EXPECT_FALSE(Form().windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
  for (const Control_Row& row : Control_Table) {
    EXPECT_EQ(Widget(row.Id).geometry(),
              QRect(row.Left / 15, row.Top / 15, row.Width / 15, row.Height / 15))
        << Written_Name(row);
  }
  EXPECT_EQ(Form().windowIcon().availableSizes(), QList{QSize(32, 32)});
  // For a screen reader.
  EXPECT_EQ(Widget(txtTrack_0).accessibleName(), "Shape to replace, row 1");
  EXPECT_EQ(Widget(cmbTracks_4).accessibleName(), "Replacement, row 5");
  EXPECT_EQ(Widget(cmbRoutes).accessibleName(), "Route");
  EXPECT_EQ(Widget(txtMessages).accessibleName(), "Message log");
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

TEST_F(Qt_Window_Test, Tab_Goes_Through_The_Controls_In_The_Order_Of_The_Table) {
  Start();
  User.Pick(cmbRoutes, u"one");
  User.Select(optDynamic_1);
  Widget(cmbRoutes).setFocus();
  std::string order;
  do {
    order += Focus() + " ";
    Native_Key(Qt::Key_Tab);
  } while (Focus() != "cmbRoutes" && order.size() < 400);
  EXPECT_EQ(order,
            "cmbRoutes optDynamic(1) txtTrack(0) cmbTracks(0) txtTrack(1) cmbTracks(1) txtTrack(2) "
            "cmbTracks(2) txtTrack(3) cmbTracks(3) txtTrack(4) cmbTracks(4) cmdCheck cmdUpdate "
            "cmdSave cmdQuit txtMessages ");
}

TEST_F(Qt_Window_Test, The_Whole_Form_Can_Be_Used_By_Keys_Alone) {
  Start();
  EXPECT_EQ(Focus(), "cmbRoutes");
  Native_Key(Qt::Key_T);
  EXPECT_EQ(User.Shown_Text(cmbRoutes), u"two") << "typing jumps to the entry";
  Native_Key(Qt::Key_Up);
  EXPECT_EQ(User.Shown_Text(cmbRoutes), u"one");
  Native_Key(Qt::Key_Tab);
  Native_Key(Qt::Key_Right);
  EXPECT_TRUE(User.Selected(optDynamic_1));
  Native_Key(Qt::Key_Tab);
  Native_Key(Qt::Key_C);
  Native_Key(Qt::Key_Tab);
  Native_Key(Qt::Key_Down, Qt::AltModifier);
  EXPECT_TRUE(List(cmbTracks_0).view()->isVisible());
  QTest::keyClicks(List(cmbTracks_0).view(), "br");
  QTest::keyClick(List(cmbTracks_0).view(), Qt::Key_Return);
  EXPECT_EQ(User.Shown_Text(cmbTracks_0), u"bridge.s");
  Native_Key(Qt::Key_C, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return User.Shown_Text(txtMessages).ends_with(u"You may look them over before updating\r\n");
  }));
  EXPECT_NE(Disk.Content(u"\\train\\Quenby\\tmp\\w.w").find(u"bridge.s"), Text::npos);
  Native_Key(Qt::Key_U, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return User.Boxes().size() == 1; }));
  Native_Key(Qt::Key_Q, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !User.Visible(); }));
}

TEST_F(Qt_Window_Test, Enter_Presses_The_Button_With_The_Focus_And_Escape_Presses_Quit) {
  Start();
  Native_Key(Qt::Key_Return);
  EXPECT_EQ(User.Save_Dialogs, 0);
  Widget(cmdSave).setFocus();
  Native_Key(Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return User.Save_Dialogs == 1; }));
  Widget(cmbRoutes).setFocus();
  Native_Key(Qt::Key_Down, Qt::AltModifier);
  EXPECT_TRUE(List(cmbRoutes).view()->isVisible());
  Native_Key(Qt::Key_Escape);
  EXPECT_FALSE(List(cmbRoutes).view()->isVisible());
  EXPECT_TRUE(User.Visible()) << "it only closes the list";
  Native_Key(Qt::Key_Escape);
  EXPECT_FALSE(User.Visible());
}

TEST_F(Qt_Window_Test, Save_Over_A_File_That_Exists_Asks_Nothing) {
  QTemporaryFile older;
  ASSERT_TRUE(older.open());
  const Text path = From_Qt(older.fileName());
  Disk.Put_File(path, u"an older log");
  Start();
  User.Save_As(path);
  User.Press(cmdSave);
  EXPECT_EQ(Disk.Content(path), User.Shown_Text(txtMessages));
  EXPECT_TRUE(User.Boxes().empty());
}

TEST_F(Qt_Window_Test, Each_Option_Takes_The_Clicks_On_What_Is_Seen_Of_It) {
  Start();
  const auto click = [&](int twips) {
    QTest::mouseClick(Form().windowHandle(), Qt::LeftButton, {}, QPoint(twips / 15, 600 / 15));
  };
  click(3100);  // in the box of both
  EXPECT_TRUE(User.Selected(optDynamic_1));
  click(2700);  // the end of the caption of the first
  EXPECT_TRUE(User.Selected(optDynamic_0));
  click(3500);
  EXPECT_TRUE(User.Selected(optDynamic_1));
}

TEST_F(Qt_Window_Test, Native_Input_In_The_Middle_Of_A_Command_Changes_Nothing_And_Escape_Ends_It) {
  Start();
  User.Pick(cmbRoutes, u"one");
  User.Select(optDynamic_1);
  In_The_Middle([&] {
    const std::string focus_before = Focus();
    for (const Control control : {cmbRoutes, optDynamic_0, txtTrack_0, cmbTracks_0, cmdUpdate}) {
      Native_Click(control);
      EXPECT_EQ(Focus(), focus_before) << Written_Name(Row_Of(control));
    }
    for (const auto key : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_X, Qt::Key_Space, Qt::Key_Return}) {
      Native_Key(key);
    }
    for (const auto key : {Qt::Key_C, Qt::Key_U, Qt::Key_S}) Native_Key(key, Qt::AltModifier);
    Widget(txtTrack_0).setFocus();
    Native_Key(Qt::Key_X);
    // A click that waits in the queue when the command ends.
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QCoreApplication::postEvent(
          &Widget(cmdUpdate),
          new QMouseEvent(type, QPointF(8, 8), Widget(cmdUpdate).mapToGlobal(QPointF(8, 8)),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    }
  });
  User.Press(cmdCheck);
  QTest::qWait(260);  // a button pressed by its Alt key would come now
  EXPECT_TRUE(User.Boxes().empty());
  EXPECT_EQ(User.Save_Dialogs, 0);
  EXPECT_EQ(User.Shown_Text(cmbRoutes), u"one");
  EXPECT_TRUE(User.Selected(optDynamic_1));
  EXPECT_EQ(User.Shown_Text(txtTrack_0) + User.Shown_Text(cmbTracks_0), u"");
  User.Select(optDynamic_0);
  In_The_Middle([&] { Native_Key(Qt::Key_Escape); });
  User.Press(cmdCheck);
  EXPECT_FALSE(User.Visible());
}

TEST_F(Qt_Window_Test, The_Log_Can_Be_Scrolled_In_The_Middle_Of_A_Command_And_Copied_Not_Typed_In) {
  Start();
  User.Pick(cmbRoutes, u"one");
  Window& seam = User.Seam();
  QScrollBar& bar = *Log().verticalScrollBar();
  In_The_Middle([&] {
    for (int i = 0; i < 100; ++i) seam.Append_Log(u"line\r\n");
    QTest::qWait(260);
    seam.Yield();
    EXPECT_GT(bar.maximum(), 50);
    EXPECT_EQ(bar.value(), bar.maximum());
    QWheelEvent wheel(QPointF(9, 9), Log().viewport()->mapToGlobal(QPointF(9, 9)), {}, {0, 1200},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(Log().viewport(), &wheel);
  });
  User.Press(cmdCheck);
  EXPECT_LT(bar.value(), bar.maximum()) << "the user reads further up";
  const Text log = seam.Read_Text(txtMessages);
  Log().setFocus();
  Native_Key(Qt::Key_X);
  Native_Key(Qt::Key_Delete);
  EXPECT_EQ(User.Shown_Text(txtMessages), log);
  Native_Key(Qt::Key_A, Qt::ControlModifier);
  Native_Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(From_Qt(QApplication::clipboard()->text().replace(u"\n"_qs, u"\r\n"_qs)), log);
}

TEST_F(Qt_Window_Test, The_Five_Lists_Hold_The_Shapes_Once_And_Open_As_Wide_As_The_Longest) {
  Start();
  User.Select(optDynamic_1);
  QComboBox& list = List(cmbTracks_3);
  for (int row = 0; row < Row_Count; ++row) EXPECT_EQ(List(cmbTracks(row)).model(), list.model());
  list.showPopup();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(list.view()->window()));
  EXPECT_GT(list.view()->viewport()->width(),
            QFontMetrics(list.view()->font()).horizontalAdvance(To_Qt(Long_Name)));
}

TEST_F(Qt_Window_Test, Of_More_Lines_Than_Can_Be_Read_Every_One_Is_There_At_The_End) {
  Start();
  User.Pick(cmbRoutes, u"one");
  In_The_Middle([&] {
    for (int i = 0; i < 60000; ++i) {
      User.Seam().Append_Log(u"Unknown shape A1t100mStrt.s, id  12345\r\n");
      User.Seam().Yield();
    }
  });
  User.Press(cmdCheck);
  const QScrollBar& bar = *Log().verticalScrollBar();
  EXPECT_EQ(User.Shown_Text(txtMessages), User.Seam().Read_Text(txtMessages));
  EXPECT_GT(Log().blockCount(), 60000);
  EXPECT_EQ(bar.value(), bar.maximum());
}

}  // namespace
}  // namespace rivelt
