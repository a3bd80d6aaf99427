// What the controls are to the program, whatever they show.

#pragma once

#include <array>

#include "window/controls.h"

namespace rivelt {

// A back end enters each change that the user makes while the program listens, and reads from here.
// A control that is changed at another time goes back to what it is here.
struct Control_States {
  std::array<Text, Control_Count> Texts;  // of the text boxes, and the picked entries of the lists
  std::array<bool, Control_Count> Enabled = Enabled_States_At_Start;
  Control Selected_Option = Selected_At_Start;

  // Enabled, and so is the frame around it.
  bool Takes_Input(Control control) const {
    const auto frame = Row_Of(control).Parent;
    return Enabled[Tab(control)] && (!frame || Enabled[Tab(*frame)]);
  }
};

}  // namespace rivelt
