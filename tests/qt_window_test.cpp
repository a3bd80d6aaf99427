// What is special to the window on Linux: its look and measures, the keyboard, and input that comes
// as native events in the middle of a command.

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFontMetricsF>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QSet>
#include <QTest>
#include <QWheelEvent>
#include <functional>
#include <memory>
#include <utility>

#include "platform/memory/memory_files.h"
#include "platform/qt/qt_text.h"
#include "qt_window_user.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

using enum Control;

// The sanitizers make the program slower, not the promise weaker.
#ifdef __SANITIZE_ADDRESS__
constexpr int Slowness = 20;
#else
constexpr int Slowness = 1;
#endif

QStringList Lines_Of(QString text) {
  return text.remove(u'\r').split(u'\n');
}

class Qt_Window_Test : public testing::Test {
 protected:
  Qt_Window_Test() {
    Put_Catalogue({u"Alpha.s", u"beta.s", u"bridge.s", u"c.s"});
    Disk.Put_File(u"\\train\\routes\\one\\one.trk", u"Name ( one )");
    Disk.Put_File(u"\\train\\routes\\two\\two.trk", u"Name ( two )");
    Disk.Put_File(u"\\train\\routes\\one\\world\\w.w",
                  u"Tr_Worldfile ( TrackObj ( SectionIdx ( 9 ) FileName ( c.s ) ) )");
    Disk.Put_Folder(u"\\train\\routes\\two\\world");
  }

  void Put_Catalogue(const std::vector<Text>& shapes) {
    Text text = u"TrackSections ( 400 ) TrackShapes ( 500 ";
    Long id = 0;
    for (const Text& shape : shapes) {
      text += Concatenate({u"TrackShape ( ", Number_Text(++id), u" FileName ( ", shape, u" ) ) "});
    }
    Disk.Put_File(u"\\train\\global\\tsection.dat", text);
  }

  static std::vector<Text> Many_Shapes(int count) {
    std::vector<Text> shapes;
    for (int i = 0; i < count; ++i) {
      // In an order far from the sorted one.
      const Long number = static_cast<Long>(i * 7919LL % count);
      shapes.push_back(Concatenate(
          {u"A_rather_long_name_of_a_track_shape_", Trim_Text(Number_Text(number)), u".s"}));
    }
    return shapes;
  }

  void Start() {
    User.Start(System_Registry, [this] { return std::make_unique<Memory_Files>(Disk); });
  }

  void In_The_Middle(std::function<void()> action) {
    Disk.On_Read = [this, act = std::move(action)] {
      const auto once = std::exchange(Disk.On_Read, nullptr);
      act();
    };
  }

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
  Memory_Registry System_Registry{"\\train"};
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
  const QImage icon = Form().windowIcon().pixmap(QSize(32, 32), 1.0).toImage();
  EXPECT_EQ(icon.size(), QSize(32, 32));
  QSet<QRgb> colours;
  for (int i = 0; i < 32 * 32; ++i) colours.insert(icon.pixel(i % 32, i / 32));
  EXPECT_LE(colours.size(), 16);
  EXPECT_GE(colours.size(), 8);
}

// The extent of the text against the box of the control, both from the widgets themselves.
void Expect_Nothing_Is_Cut_Off(const Qt_Window& window) {
  for (const Control_Row& row : Control_Table) {
    if (row.Type == Control_Type::Log_Text_Box) continue;
    SCOPED_TRACE(Written_Name(row));
    const QWidget& widget = window.Widget(row.Id);
    const QFontMetricsF metrics(widget.font());
    const QRect space = Text_Space(widget, row);
    EXPECT_TRUE(widget.rect().contains(space));
    EXPECT_LE(metrics.height(), space.height());
    EXPECT_LE(metrics.horizontalAdvance(To_Qt(row.Caption).remove(u'&')), space.width());
    EXPECT_GE(metrics.height(), 8) << "too small to read";
  }
}

TEST_F(Qt_Window_Test, No_Text_Is_Cut_Off_With_Any_Desktop_Font) {
  const QFont usual = QApplication::font();
  for (const char* family : {"DejaVu Sans", "Liberation Sans", "Noto Mono"}) {
    for (const int points : {8, 10, 14, 24}) {
      SCOPED_TRACE(testing::Message() << family << " " << points);
      QApplication::setFont(QFont(QLatin1String(family), points));
      Expect_Nothing_Is_Cut_Off(Qt_Window());
    }
  }
  QApplication::setFont(usual);
}

// Where the ink of a picture ends at the right, in pixels of the screen.
int Last_Ink_Column(const QImage& picture) {
  for (int x = picture.width() - 1; x >= 0; --x) {
    for (int y = 0; y < picture.height(); ++y) {
      if (qGray(picture.pixel(x, y)) < 100) return x;
    }
  }
  return -1;
}

TEST_F(Qt_Window_Test, The_Captions_As_They_Are_Painted_End_In_Front_Of_What_Follows) {
  for (const int points : {10, 24}) {
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), points));
    Qt_Window window;
    for (const Control control : {Label1, Label2, optDynamic_0, optDynamic_1}) {
      const Control_Row& row = Row_Of(control);
      SCOPED_TRACE(Written_Name(row));
      QWidget& widget = window.Widget(control);
      widget.resize(widget.width() * 2, widget.height());  // paints beyond its box, were it longer
      const QImage picture = widget.grab().toImage();
      const double pixels = picture.devicePixelRatio();
      EXPECT_GT(Last_Ink_Column(picture), 20 * pixels);
      EXPECT_LT(Last_Ink_Column(picture), (Visible_Part(row).right() + 1) * pixels);
    }
  }
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
  Native_Key(Qt::Key_S, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return User.Save_Dialogs == 1; }));
  Native_Key(Qt::Key_U, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return User.Boxes().size() == 1; }));
  Native_Key(Qt::Key_Q, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !User.Visible(); }));
}

TEST_F(Qt_Window_Test, Enter_Presses_The_Button_With_The_Focus_And_Escape_Presses_Quit) {
  Start();
  const Text log = User.Shown_Text(txtMessages);
  Native_Key(Qt::Key_Return);
  EXPECT_EQ(User.Shown_Text(txtMessages), log);
  Widget(cmdSave).setFocus();
  Native_Key(Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return User.Save_Dialogs == 1; }));
  List(cmbRoutes).showPopup();
  QTest::keyClick(List(cmbRoutes).view(), Qt::Key_Escape);
  EXPECT_TRUE(User.Visible()) << "it only closes the list";
  Widget(txtMessages).setFocus();
  Native_Key(Qt::Key_Escape);
  EXPECT_FALSE(User.Visible());
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
  User.Type(txtTrack_0, u"c");
  User.Pick(cmbTracks_0, u"beta.s");
  std::string focus_before;
  In_The_Middle([&] {
    focus_before = Focus();
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
  });
  User.Press(cmdCheck);
  QTest::qWait(150);  // a button pressed by its Alt key would come now
  EXPECT_TRUE(User.Boxes().empty());
  EXPECT_EQ(User.Save_Dialogs, 0);
  EXPECT_EQ(User.Shown_Text(cmbRoutes), u"one");
  EXPECT_TRUE(User.Selected(optDynamic_1));
  EXPECT_EQ(User.Shown_Text(txtTrack_0), u"c");
  EXPECT_EQ(User.Shown_Text(cmbTracks_0), u"beta.s");
  EXPECT_TRUE(User.Visible());
  User.Type(txtTrack_0, u"other");
  In_The_Middle([&] { Native_Key(Qt::Key_Escape); });
  User.Press(cmdCheck);
  EXPECT_FALSE(User.Visible());
  EXPECT_TRUE(User.Seam().Read_Text(txtMessages).ends_with(u"before updating\r\n") ||
              User.Seam().Read_Text(txtMessages).ends_with(u"No update needed\r\n"));
}

TEST_F(Qt_Window_Test, A_Click_That_Waits_In_The_Queue_When_The_Command_Ends_Is_Dropped) {
  Start();
  User.Pick(cmbRoutes, u"one");
  In_The_Middle([&] {
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QCoreApplication::postEvent(
          &Widget(cmdUpdate),
          new QMouseEvent(type, QPointF(8, 8), Widget(cmdUpdate).mapToGlobal(QPointF(8, 8)),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    }
  });
  User.Press(cmdCheck);
  QTest::qWait(260);
  EXPECT_TRUE(User.Boxes().empty());
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
  EXPECT_EQ(Lines_Of(QApplication::clipboard()->text()), Lines_Of(To_Qt(log)));
}

TEST_F(Qt_Window_Test, Rows_And_Log_Have_Names_For_A_Screen_Reader) {
  EXPECT_EQ(Widget(txtTrack_0).accessibleName(), "Shape to replace, row 1");
  EXPECT_EQ(Widget(cmbTracks_4).accessibleName(), "Replacement, row 5");
  EXPECT_EQ(Widget(cmbRoutes).accessibleName(), "Route");
  EXPECT_EQ(Widget(txtMessages).accessibleName(), "Message log");
}

TEST_F(Qt_Window_Test, Forty_Thousand_Shapes_Are_Held_Once_And_A_List_Of_Them_Opens_At_Once) {
  Put_Catalogue(Many_Shapes(40000));
  Start();
  User.Select(optDynamic_1);
  QComboBox& list = List(cmbTracks_3);
  EXPECT_EQ(list.count(), 40001);
  for (int row = 0; row < Row_Count; ++row) {
    EXPECT_EQ(List(cmbTracks(row)).model(), list.model());
  }
  QElapsedTimer time;
  time.start();
  list.showPopup();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(list.view()->window()));
  list.view()->viewport()->repaint();
  RecordProperty("milliseconds_to_open", static_cast<int>(time.elapsed()));
  EXPECT_LT(time.elapsed(), 100 * Slowness);
  const int text = QFontMetrics(list.view()->font()).horizontalAdvance(list.itemText(40000));
  EXPECT_GT(list.view()->viewport()->width(), text);
  time.start();
  QTest::keyClicks(list.view(), "a_rather_long_name_of_a_track_shape_77");
  EXPECT_EQ(list.view()->currentIndex().data().toString(),
            "A_rather_long_name_of_a_track_shape_77.s");
  RecordProperty("milliseconds_to_jump_38_times", static_cast<int>(time.elapsed()));
}

TEST_F(Qt_Window_Test, The_Start_With_Many_Shapes_Takes_Under_Half_A_Second) {
  Put_Catalogue(Many_Shapes(15000));
  QElapsedTimer time;
  time.start();
  Start();
  RecordProperty("milliseconds_to_start", static_cast<int>(time.elapsed()));
  EXPECT_LT(time.elapsed(), 500 * Slowness);
}

TEST_F(Qt_Window_Test, Two_Hundred_Thousand_Lines_Do_Not_Slow_The_Log_Down) {
  Start();
  User.Pick(cmbRoutes, u"one");
  QElapsedTimer time;
  qint64 first = 0;
  qint64 second = 0;
  In_The_Middle([&] {
    Window& seam = User.Seam();
    const auto append_half = [&] {
      time.start();
      for (int i = 0; i < 100000; ++i) {
        seam.Append_Log(u"Unknown shape A1t100mStrt.s, id  12345\r\n");
        seam.Yield();
      }
      Log().repaint();
      QTest::qWait(260);
      seam.Yield();
      return time.elapsed() - 260;
    };
    first = append_half();
    second = append_half();
  });
  User.Press(cmdCheck);
  RecordProperty("milliseconds_for_the_first_half", static_cast<int>(first));
  RecordProperty("milliseconds_for_the_second_half", static_cast<int>(second));
  EXPECT_LT(second, 2 * first + 50);
  const QScrollBar& bar = *Log().verticalScrollBar();
  EXPECT_EQ(bar.value(), bar.maximum());
  time.start();
  EXPECT_EQ(User.Shown_Text(txtMessages), User.Seam().Read_Text(txtMessages));
  RecordProperty("milliseconds_until_all_lines_are_there", static_cast<int>(time.elapsed()));
  EXPECT_GT(Log().blockCount(), 200000);
  EXPECT_EQ(bar.value(), bar.maximum());
}

}  // namespace
}  // namespace rivelt
