#include <string>
#include <string_view>
#include <utility>

#include "platform/machine.h"
#include "programs/cli/commands.h"
#include "text/utf8.h"
#include "window/menu.h"

namespace rivelt {
namespace {

// Why a line of a script cannot be carried out.
struct Bad_Line {
  std::string Reason;
};

// The first word of a line, and everything after the one blank that ends it.
std::pair<std::string_view, std::string_view> Split_Word(std::string_view line) {
  const std::size_t blank = line.find(' ');
  if (blank == std::string_view::npos) return {line, {}};
  return {line.substr(0, blank), line.substr(blank + 1)};
}

std::string Shown_Text(const Console_Window& window, const Control_Row& row) {
  switch (row.Type) {
    case Control_Type::Label:
    case Control_Type::Frame:
    case Control_Type::Command_Button:
      return To_Utf8(row.Caption);
    case Control_Type::Option_Button:
      return window.Read_Value(row.Id) ? "True" : "False";
    default:
      return To_Utf8(window.Read_Text(row.Id));
  }
}

// On one line: a line end shows as \n.
std::string On_One_Line(const std::string& text) {
  std::string line;
  for (const char character : text) {
    if (character == '\n') line += "\\n";
    if (character != '\n' && character != '\r') line += character;
  }
  return line;
}

class Script {
 public:
  Script(Console_Window& window, Output& output) : Played(window), Console(output) {
    Played.Ask = [this] { return Answer; };
  }

  // False: the script has come to its end.
  bool Run_Line(std::string_view line) {
    const auto [keyword, argument] = Split_Word(line);
    if (keyword == "quit") {
      Require_No(argument);
      Played.Press(Control::cmdQuit);
      return false;
    }
    if (!Set_Control(keyword, argument) && !Press_Button(keyword, argument) &&
        !Print(keyword, argument)) {
      throw Bad_Line{"unknown command \"" + std::string(keyword) + "\""};
    }
    return true;
  }

 private:
  bool Set_Control(std::string_view keyword, std::string_view argument) {
    if (keyword == "route") {
      Pick(Control::cmbRoutes, argument);
    } else if (keyword == "option") {
      Select(argument);
    } else if (keyword == "old") {
      const auto [row, text] = Row_And_Text(argument);
      Require_Enabled(txtTrack(row));
      Played.Type(txtTrack(row), From_Utf8(text));
    } else if (keyword == "new") {
      const auto [row, text] = Row_And_Text(argument);
      Pick(cmbTracks(row), text);
    } else if (keyword == "answer") {
      Set_Answer(argument);
    } else if (keyword == "whole") {
      Set_Whole_Route(argument);
    } else {
      return false;
    }
    return true;
  }

  bool Press_Button(std::string_view keyword, std::string_view argument) {
    if (keyword == "check" || keyword == "update") {
      Require_No(argument);
      Press(keyword == "check" ? Control::cmdCheck : Control::cmdUpdate);
      Played.Report();
    } else if (keyword == "save") {
      if (argument.empty()) throw Bad_Line{"save needs a file"};
      Require_Enabled(Control::cmdSave);
      Played.Save_File_Names.push_back(From_Utf8(argument));
      Press(Control::cmdSave);
      Played.Report();
    } else {
      return false;
    }
    return true;
  }

  bool Print(std::string_view keyword, std::string_view argument) {
    if (keyword == "log") {
      Require_No(argument);
      Console.Write(Played.Log());
      if (Played.Log().empty()) Console.Write("\n");
      Console.End_Line();
    } else if (keyword == "state") {
      Require_No(argument);
      Print_State();
    } else if (keyword == "echo") {
      Console.Write(std::string(argument) + "\n");
    } else {
      return false;
    }
    return true;
  }

  void Print_State() {
    for (const Control_Row& row : Control_Table) {
      Print_State_Of(Written_Name(row), Played.Enabled(row.Id), Shown_Text(Played, row));
    }
    for (const Menu_Row& row : Menu_Table) {
      std::string text;
      if (row.Kind == Menu_Kind::Check_Mark) text = Played.Whole_Route() ? "True" : "False";
      if (row.Kind == Menu_Kind::Sub_Menu) text = std::to_string(Played.Restorable().size());
      Print_State_Of(To_Utf8(Plain_Caption(row.Caption)), Played.Can_Choose(row.Id), text);
    }
  }

  void Print_State_Of(const std::string& name, bool is_enabled, const std::string& text) {
    const std::string line =
        name + "\t" + (is_enabled ? "enabled" : "disabled") + "\t" + On_One_Line(text) + "\n";
    Console.Write(line);
  }

  void Select(std::string_view option) {
    if (option != "dynamic" && option != "all") throw Bad_Line{"option is dynamic or all"};
    const Control control = optDynamic(option == "all" ? 1 : 0);
    Require_Enabled(control);
    Played.Select(control);
  }

  void Set_Whole_Route(std::string_view state) {
    if (state != "on" && state != "off") throw Bad_Line{"whole is on or off"};
    if (!Played.Can_Choose(Menu_Entry::Whole_Route)) throw Bad_Line{"Whole route is disabled"};
    if (Played.Whole_Route() != (state == "on")) Played.Toggle_Whole_Route();
  }

  void Set_Answer(std::string_view answer) {
    if (answer != "ok" && answer != "cancel") throw Bad_Line{"answer is ok or cancel"};
    Answer = answer == "ok" ? Answer_Ok : 0;
  }

  void Pick(Control list, std::string_view entry) {
    Require_Enabled(list);
    if (!Played.Pick(list, From_Utf8(entry))) {
      throw Bad_Line{Written_Name(Row_Of(list)) + " has no entry \"" + std::string(entry) + "\""};
    }
  }

  void Press(Control button) {
    Require_Enabled(button);
    Played.Press(button);
  }

  void Require_Enabled(Control control) const {
    if (!Played.Takes_Input(control))
      throw Bad_Line{Written_Name(Row_Of(control)) + " is disabled"};
  }

  static void Require_No(std::string_view argument) {
    if (!argument.empty()) throw Bad_Line{"nothing may follow this command"};
  }

  static std::pair<int, std::string_view> Row_And_Text(std::string_view argument) {
    const auto [row, text] = Split_Word(argument);
    if (row.size() != 1 || row[0] < '0' || row[0] >= '0' + Row_Count) {
      throw Bad_Line{"a row is a number from 0 to 4"};
    }
    return {row[0] - '0', text};
  }

  Console_Window& Played;
  Output& Console;
  int Answer = Answer_Ok;
};

bool Reads_As_Nothing(std::string_view line) {
  return line.empty() || line.front() == '#';
}

}  // namespace

int Run_Script(Console_Window& window, Output& output, std::istream& input) {
  constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
  Script script(window, output);
  std::string line;
  for (int number = 1; std::getline(input, line); ++number) {
    if (number == 1 && line.starts_with(byte_order_mark)) line.erase(0, byte_order_mark.size());
    if (!line.empty() && line.back() == '\r') line.pop_back();
    try {
      if (!Reads_As_Nothing(line) && !script.Run_Line(line)) break;
    } catch (const Bad_Line& bad) {
      Write_Error("line " + std::to_string(number) + ": " + bad.Reason);
      return Exit_Failure;
    }
    output.Flush();
  }
  if (End_Requested()) throw Interrupted();
  if (input.bad()) {
    Write_Error("Cannot read the script");
    return Exit_Wrong_Usage;
  }
  return window.Failed() ? Exit_Failure : Exit_Done;
}

}  // namespace rivelt
