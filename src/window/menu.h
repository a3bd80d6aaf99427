// The menu above the controls: one table from which every back end builds it. What an entry does,
// and whether it can be chosen at the moment, an Event_Gate knows.

#pragma once

#include <array>
#include <cstdint>

#include "text/text.h"

namespace rivelt {

inline constexpr Text_View Menu_Caption = u"&Route";

enum class Menu_Entry : std::uint8_t {
  Open_Installation,
  Whole_Route,
  References,
  To_Text,
  Restore,
  Reason,
};

enum class Menu_Kind : std::uint8_t {
  Command,
  Check_Mark,
  Sub_Menu,  // filled as the menu opens; its entries are the command's choices
};

struct Menu_Row {
  Menu_Entry Id;
  Menu_Kind Kind;
  Text_View Caption;  // the letter after "&" chooses the entry
  bool After_Line = false;
};

inline constexpr auto Menu_Table = std::to_array<Menu_Row>({
    {Menu_Entry::Open_Installation, Menu_Kind::Command, u"&Open an installation..."},
    {Menu_Entry::Whole_Route, Menu_Kind::Check_Mark, u"&Whole route", true},
    {Menu_Entry::References, Menu_Kind::Command, u"Where its &numbers lead"},
    {Menu_Entry::To_Text, Menu_Kind::Command, u"Convert binary files to &text"},
    {Menu_Entry::Restore, Menu_Kind::Sub_Menu, u"Restore a &backup"},
    {Menu_Entry::Reason, Menu_Kind::Command, u"Why did it &fail?", true},
});

}  // namespace rivelt
