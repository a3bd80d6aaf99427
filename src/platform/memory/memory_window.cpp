#include "platform/memory/memory_window.h"

namespace rivelt {
namespace {

// Takes the next prepared answer, or the usual one if none is left.
template <class Answer>
Answer Next_Answer(std::deque<Answer>& answers, Answer usual) {
  if (answers.empty()) return usual;
  Answer next = std::move(answers.front());
  answers.pop_front();
  return next;
}

}  // namespace

void Memory_Window::Start(Registry& registry, Create_File_System_Object create_object) {
  Gate.Start_Up(registry, std::move(create_object));
}

bool Memory_Window::Pick(Control list, Text_View entry) {
  if (Gate.Working() || !Takes_Input(list) || !List(list).Find(entry)) return false;
  States.Texts[Tab(list)] = entry;
  Gate.Raise(list);
  return true;
}

bool Memory_Window::Type(Control text_box, Text_View text) {
  if (Gate.Working() || !Takes_Input(text_box)) return false;
  if (States.Texts[Tab(text_box)] != text) {
    States.Texts[Tab(text_box)] = text;
    Gate.Raise(text_box);
  }
  return true;
}

bool Memory_Window::Select(Control option) {
  if (Gate.Working() || !Takes_Input(option)) return false;
  States.Selected_Option = option;
  Gate.Raise(option);
  return true;
}

bool Memory_Window::Press(Control button) {
  if (!Takes_Input(button)) return false;
  const bool taken = !Gate.Working() || button == Quit_Control;
  Gate.Raise(button);
  return taken;
}

void Memory_Window::Show() {
  States = {};
  Entries.Reset();
  Log_Text.clear();
  Is_Visible = true;
}

Text Memory_Window::Read_Text(Control control) const {
  return control == Log_Control ? Log_Text : States.Texts[Tab(control)];
}

int Memory_Window::Message_Box(Text_View text, int style, std::optional<Text_View> title) {
  Shown_Boxes.push_back({Text(text), style, Text(title.value_or(Window_Caption))});
  return Next_Answer(Box_Answers, Answer_Ok);
}

void Memory_Window::Show_Save_Dialog() {
  Chosen_File_Name = Next_Answer(Save_File_Names, Text());
}

Text Memory_Window::Ask_For_Folder() {
  return Next_Answer(Folders, Text());
}

void Memory_Window::Yield() {
  if (On_Yield) On_Yield();
}

}  // namespace rivelt
