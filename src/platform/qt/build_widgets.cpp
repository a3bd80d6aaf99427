#include "platform/qt/build_widgets.h"

#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>

#include "platform/qt/log_view.h"
#include "platform/qt/qt_text.h"

namespace rivelt {
namespace {

constexpr int Twips_Per_Pixel = 15;

QRect Pixels(const Control_Row& row) {
  return {row.Left / Twips_Per_Pixel, row.Top / Twips_Per_Pixel, row.Width / Twips_Per_Pixel,
          row.Height / Twips_Per_Pixel};
}

// The part of the control that the user sees, in its own pixels.
QRect Visible_Pixels(const Control_Row& row) {
  const Twips_Rect visible = Visible_Part(row);
  return {0, 0, (visible.Right - visible.Left) / Twips_Per_Pixel,
          (visible.Bottom - visible.Top) / Twips_Per_Pixel};
}

QWidget* Build_Label(const Control_Row& row, QWidget* parent) {
  auto* label = new QLabel(To_Qt(row.Caption), parent);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QWidget* Build_List(Entry_Model& model, QWidget* parent) {
  auto* list = new QComboBox(parent);
  auto* view = new QListView(list);
  // Or opening the list would measure each of its entries.
  view->setUniformItemSizes(true);
  list->setView(view);
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMaxVisibleItems(20);
  QPalette white = list->palette();
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    white.setBrush(group, QPalette::Button, white.brush(group, QPalette::Base));
  }
  list->setPalette(white);
  list->setModel(&model);
  list->setCurrentIndex(-1);
  return list;
}

QWidget* Build_Button(const Control_Row& row, QWidget* parent) {
  auto* button = new QPushButton(To_Qt(row.Caption), parent);
  button->setAutoDefault(true);  // Enter presses the button that has the focus
  return button;
}

QWidget* Build(const Control_Row& row, QWidget* parent, Entry_Model& model) {
  switch (row.Type) {
    case Control_Type::Label:
      return Build_Label(row, parent);
    case Control_Type::Drop_Down_List:
      return Build_List(model, parent);
    case Control_Type::Option_Button:
      return new QRadioButton(To_Qt(row.Caption), parent);
    case Control_Type::Frame:
      return new QGroupBox(To_Qt(row.Caption), parent);
    case Control_Type::Text_Box:
      return new QLineEdit(parent);
    case Control_Type::Log_Text_Box:
      return new Log_View(parent);
    case Control_Type::Command_Button:
      return Build_Button(row, parent);
  }
  return nullptr;
}

// The largest font, up to the usual one, whose line fits; without a caption its height has to
// alone.
void Fit_Font(QWidget& widget, const Control_Row& row) {
  if (row.Type == Control_Type::Log_Text_Box) return;  // it wraps and scrolls
  constexpr int smallest_pixel_size = 5;
  const QSize space = Text_Space(widget, row).size();
  const QString text = To_Qt(Plain_Caption(row.Caption));
  QFont font = QApplication::font();
  for (int size = QFontInfo(font).pixelSize(); size >= smallest_pixel_size; --size) {
    font.setPixelSize(size);
    const QFontMetricsF metrics(font);
    // On screens with a broken scale the glyphs come out up to a pixel wider in all.
    if (metrics.height() <= space.height() &&
        metrics.horizontalAdvance(text) + 1 <= space.width()) {
      break;
    }
  }
  widget.setFont(font);
}

// Two captions side by side look untidy in two sizes.
void Share_Smaller_Font(QWidget& one, QWidget& other) {
  const QFont smaller =
      one.font().pixelSize() < other.font().pixelSize() ? one.font() : other.font();
  one.setFont(smaller);
  other.setFont(smaller);
}

template <class Option>
Option Style_Option(const QWidget& widget) {
  Option option;
  option.initFrom(&widget);
  return option;
}

}  // namespace

QSize Client_Area() {
  return {Client_Width / Twips_Per_Pixel, Client_Height / Twips_Per_Pixel};
}

QRect Text_Space(const QWidget& widget, const Control_Row& row) {
  const QStyle& style = *widget.style();
  const QRect visible = Visible_Pixels(row);
  switch (row.Type) {
    case Control_Type::Option_Button: {
      const auto option = Style_Option<QStyleOptionButton>(widget);
      return visible & style.subElementRect(QStyle::SE_RadioButtonContents, &option, &widget);
    }
    case Control_Type::Command_Button: {
      const auto option = Style_Option<QStyleOptionButton>(widget);
      return style.subElementRect(QStyle::SE_PushButtonContents, &option, &widget);
    }
    case Control_Type::Drop_Down_List: {
      const auto option = Style_Option<QStyleOptionComboBox>(widget);
      return style.subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField,
                                  &widget);
    }
    case Control_Type::Text_Box: {
      const auto option = Style_Option<QStyleOptionFrame>(widget);
      const int frame = style.pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &widget);
      return visible.adjusted(frame + 2, frame, -frame - 2, -frame);
    }
    case Control_Type::Frame: {
      // The caption is above the first control inside.
      const auto is_inside = [&](const Control_Row& inner) { return inner.Parent == row.Id; };
      return {visible.left() + 8, 0, visible.width() - 16,
              Pixels(Row_Of(First_Control(is_inside))).top()};
    }
    default:
      return visible;
  }
}

Widgets Build_Widgets(QWidget& client, List_Entries<Entry_Model>& entries) {
  Widgets widgets{};
  auto* options = new QButtonGroup(&client);
  QWidget* previous = nullptr;
  for (const Control_Row& row : Control_Table) {
    QWidget* made =
        Build(row, row.Parent ? widgets[Tab(*row.Parent)] : &client, entries.Of(row.Id));
    made->setGeometry(Pixels(row));
    made->setAccessibleName(To_Qt(row.Accessible_Name));
    made->setObjectName(QString::fromStdString(Written_Name(row)));
    Fit_Font(*made, row);
    if (auto* option = qobject_cast<QRadioButton*>(made)) options->addButton(option, row.Index);
    if (previous != nullptr) QWidget::setTabOrder(previous, made);
    previous = widgets[Tab(row.Id)] = made;
  }
  Share_Smaller_Font(*options->button(0), *options->button(1));
  return widgets;
}

}  // namespace rivelt
