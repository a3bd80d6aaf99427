// The controls of the window: one table from which every back end builds its widgets.

#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "text/text.h"

namespace rivelt {

inline constexpr Text_View Window_Caption = u"Rivelt";

// In twips, a twentieth of a point: 15 of them are a pixel at 100 %.
inline constexpr int Client_Width = 5745;
inline constexpr int Client_Height = 6600;

inline constexpr int Row_Count = 5;

// Ahead of every shape file name in the lists of cmbTracks, and the order to remove a track object.
inline constexpr Text_View Delete_Entry = u" -delete-";

// The identity of a control, in tab order.
enum class Control : std::uint8_t {
  Label1,
  cmbRoutes,
  optDynamic_0,
  optDynamic_1,
  Label2,
  Transform,
  txtTrack_0,
  cmbTracks_0,
  txtTrack_1,
  cmbTracks_1,
  txtTrack_2,
  cmbTracks_2,
  txtTrack_3,
  cmbTracks_3,
  txtTrack_4,
  cmbTracks_4,
  Label3,
  Label4,
  cmdCheck,
  Label6,
  cmdUpdate,
  Label7,
  cmdSave,
  Label5,
  cmdQuit,
  txtMessages,
};

enum class Control_Type : std::uint8_t {
  Label,
  Drop_Down_List,  // sorted; the user picks an entry and cannot type one
  Option_Button,
  Frame,
  Text_Box,      // one line
  Log_Text_Box,  // many lines, with a vertical scroll bar
  Command_Button,
};

// What fills a list. Lists with the same source have the same entries.
enum class List : std::uint8_t { None, Routes, Tracks };
inline constexpr std::size_t List_Count = 3;

// The procedure of the form that the user calls at the control.
enum class Event : std::uint8_t {
  None,
  cmbRoutes_Click,
  optDynamic_Click,
  txtTrack_Change,
  cmbTracks_Click,
  cmdCheck_Click,
  cmdUpdate_Click,
  cmdSave_Click,
  cmdQuit_Click,
};

inline constexpr int Not_In_Array = -1;

struct Control_Row {
  Control Id;
  Text_View Name;
  int Index;  // in a control array, else Not_In_Array
  Control_Type Type;
  std::optional<Control> Parent;  // the frame around it, from whose corner its place counts
  Text_View Caption;              // the letter after "&" is the control's Alt key
  int Left, Top, Width, Height;   // twips
  int Tab;
  bool Enabled_At_Start;
  Event Raises = Event::None;
  List Filled_By = List::None;
  Text_View Accessible_Name = {};  // what a screen reader says where no caption does
};

inline constexpr std::array Control_Table = [] {
  using enum Control;
  using enum Control_Type;
  using enum Event;
  constexpr auto in_window = std::nullopt;
  constexpr Control in_frame = Transform;
  constexpr auto no_list = List::None;
  constexpr int single = Not_In_Array;
  // clang-format off
  return std::to_array<Control_Row>({
      {Label1, u"Label1", single, Label, in_window, u"Select route:", 600, 150, 1095, 255, 0, true},
      {cmbRoutes, u"cmbRoutes", single, Drop_Down_List, in_window, u"", 1680, 120, 3255, 315, 1, true, cmbRoutes_Click, List::Routes, u"Route"},
      {optDynamic_0, u"optDynamic", 0, Option_Button, in_window, u"Check dynamic track only", 600, 480, 3015, 255, 2, true, optDynamic_Click},
      {optDynamic_1, u"optDynamic", 1, Option_Button, in_window, u"Check all track sections", 3000, 480, 3015, 255, 3, true, optDynamic_Click},
      {Label2, u"Label2", single, Label, in_window, u"v1.1, April 2002 - for everyone who keeps a route running", 120, 6240, 5535, 255, 4, true},
      {Transform, u"Transform", single, Frame, in_window, u"Transform shape", 120, 840, 5535, 2055, 5, false},
      {txtTrack_0, u"txtTrack", 0, Text_Box, in_frame, u"", 120, 240, 2415, 315, 6, false, txtTrack_Change, no_list, u"Shape to replace, row 1"},
      {cmbTracks_0, u"cmbTracks", 0, Drop_Down_List, in_frame, u"", 3000, 240, 2415, 315, 7, false, cmbTracks_Click, List::Tracks, u"Replacement, row 1"},
      {txtTrack_1, u"txtTrack", 1, Text_Box, in_frame, u"", 120, 600, 2415, 315, 8, false, txtTrack_Change, no_list, u"Shape to replace, row 2"},
      {cmbTracks_1, u"cmbTracks", 1, Drop_Down_List, in_frame, u"", 3000, 600, 2415, 315, 9, false, cmbTracks_Click, List::Tracks, u"Replacement, row 2"},
      {txtTrack_2, u"txtTrack", 2, Text_Box, in_frame, u"", 120, 960, 2415, 315, 10, false, txtTrack_Change, no_list, u"Shape to replace, row 3"},
      {cmbTracks_2, u"cmbTracks", 2, Drop_Down_List, in_frame, u"", 3000, 960, 2415, 315, 11, false, cmbTracks_Click, List::Tracks, u"Replacement, row 3"},
      {txtTrack_3, u"txtTrack", 3, Text_Box, in_frame, u"", 120, 1320, 2415, 315, 12, false, txtTrack_Change, no_list, u"Shape to replace, row 4"},
      {cmbTracks_3, u"cmbTracks", 3, Drop_Down_List, in_frame, u"", 3000, 1320, 2415, 315, 13, false, cmbTracks_Click, List::Tracks, u"Replacement, row 4"},
      {txtTrack_4, u"txtTrack", 4, Text_Box, in_frame, u"", 120, 1680, 2415, 315, 14, false, txtTrack_Change, no_list, u"Shape to replace, row 5"},
      {cmbTracks_4, u"cmbTracks", 4, Drop_Down_List, in_frame, u"", 3000, 1680, 2415, 315, 15, false, cmbTracks_Click, List::Tracks, u"Replacement, row 5"},
      {Label3, u"Label3", single, Label, in_frame, u">>", 2640, 270, 255, 255, 16, true},
      {Label4, u"Label4", single, Label, in_frame, u">>", 2640, 630, 255, 255, 17, true},
      {cmdCheck, u"cmdCheck", single, Command_Button, in_window, u"&Check", 600, 5760, 975, 375, 18, false, cmdCheck_Click},
      {Label6, u"Label6", single, Label, in_frame, u">>", 2640, 1350, 255, 255, 19, true},
      {cmdUpdate, u"cmdUpdate", single, Command_Button, in_window, u"&Update", 1800, 5760, 975, 375, 20, false, cmdUpdate_Click},
      {Label7, u"Label7", single, Label, in_frame, u">>", 2640, 1710, 255, 255, 21, true},
      {cmdSave, u"cmdSave", single, Command_Button, in_window, u"&Save", 3000, 5760, 975, 375, 22, true, cmdSave_Click},
      {Label5, u"Label5", single, Label, in_frame, u">>", 2640, 990, 255, 255, 23, true},
      {cmdQuit, u"cmdQuit", single, Command_Button, in_window, u"&Quit", 4200, 5760, 975, 375, 24, true, cmdQuit_Click},
      {txtMessages, u"txtMessages", single, Log_Text_Box, in_window, u"", 120, 3000, 5535, 2655, 25, true, Event::None, no_list, u"Message log"},
  });
  // clang-format on
}();

inline constexpr std::size_t Control_Count = Control_Table.size();

static_assert(Control_Count == static_cast<std::size_t>(Control::txtMessages) + 1);
static_assert(std::ranges::all_of(Control_Table,
                                  [](const Control_Row& row) {
                                    return &row - Control_Table.data() == row.Tab &&
                                           static_cast<int>(row.Id) == row.Tab;
                                  }),
              "the rows stand in the order of their tab positions, each position once");

// The index of a control in the table, and in every array of what a back end keeps of them.
constexpr std::size_t Tab(Control control) {
  return static_cast<std::size_t>(control);
}

constexpr const Control_Row& Row_Of(Control control) {
  return Control_Table[Tab(control)];
}

inline constexpr std::array Enabled_States_At_Start = [] {
  std::array<bool, Control_Count> states{};
  for (const Control_Row& row : Control_Table) states[Tab(row.Id)] = row.Enabled_At_Start;
  return states;
}();

// The first control in tab order of which that is true; one must exist.
template <class Predicate>
constexpr Control First_Control(const Predicate& is_it) {
  return std::ranges::find_if(Control_Table, is_it)->Id;
}

// What back ends treat apart.
inline constexpr Control Log_Control =
    First_Control([](const auto& row) { return row.Type == Control_Type::Log_Text_Box; });
inline constexpr Control Quit_Control =
    First_Control([](const auto& row) { return row.Raises == Event::cmdQuit_Click; });
inline constexpr Control Focus_At_Start =
    First_Control([](const auto& row) { return row.Type != Control_Type::Label; });
inline constexpr Control Selected_At_Start =
    First_Control([](const auto& row) { return row.Type == Control_Type::Option_Button; });

// The elements of the control arrays, by their index from 0.
constexpr Control optDynamic(int index) {
  return index == 0 ? Control::optDynamic_0 : Control::optDynamic_1;
}
constexpr Control txtTrack(int index) {
  return static_cast<Control>(static_cast<int>(Control::txtTrack_0) + 2 * index);
}
constexpr Control cmbTracks(int index) {
  return static_cast<Control>(static_cast<int>(Control::cmbTracks_0) + 2 * index);
}
static_assert(txtTrack(4) == Control::txtTrack_4 && cmbTracks(4) == Control::cmbTracks_4);

// A rectangle in twips. Its right and bottom edges are not part of it.
struct Twips_Rect {
  int Left, Top, Right, Bottom;
};

constexpr Twips_Rect Place_In_Parent(const Control_Row& row) {
  return {row.Left, row.Top, row.Left + row.Width, row.Top + row.Height};
}

constexpr bool Overlap(const Twips_Rect& one, const Twips_Rect& other) {
  return one.Left < other.Right && other.Left < one.Right && one.Top < other.Bottom &&
         other.Top < one.Bottom;
}

// The part of a control that is seen, from the same corner as its place. Some places of the table
// overlap, and one reaches over the edge: a control ends where a later one or the edge begins.
constexpr Twips_Rect Visible_Part(const Control_Row& row) {
  Twips_Rect visible = Place_In_Parent(row);
  visible.Right = std::min(visible.Right, row.Parent ? Row_Of(*row.Parent).Width : Client_Width);
  for (const Control_Row& later : Control_Table) {
    if (later.Tab <= row.Tab || later.Parent != row.Parent) continue;
    if (Overlap(visible, Place_In_Parent(later))) visible.Right = later.Left;
  }
  return visible;
}
static_assert(Visible_Part(Row_Of(Control::optDynamic_0)).Right == 3000);
static_assert(Visible_Part(Row_Of(Control::optDynamic_1)).Right == Client_Width);

// The caption without the mark of its Alt key.
Text Plain_Caption(Text_View caption);

// The name as it is written: "cmbRoutes", "txtTrack(0)".
std::string Written_Name(const Control_Row& row);

}  // namespace rivelt
