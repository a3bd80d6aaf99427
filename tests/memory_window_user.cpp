#include "platform/memory/memory_window.h"
#include "window/one_line.h"
#include "window_user.h"

namespace rivelt {
namespace {

class Memory_Window_User : public Window_User {
 public:
  void Start(Registry& registry, Create_File_System_Object create_object) override {
    Screen.Start(registry, std::move(create_object));
  }

  void Pick(Control list, Text_View entry) override { Screen.Pick(list, entry); }
  void Type(Control text_box, Text_View text) override { Screen.Type(text_box, text); }
  void Paste(Control text_box, Text_View text) override {
    Set_By_Aid(text_box, Screen.Read_Text(text_box).append(text));
  }
  void Press(Control button) override {
    const bool is_option = Row_Of(button).Type == Control_Type::Option_Button;
    is_option ? Screen.Select(button) : Screen.Press(button);
  }
  void Set_By_Aid(Control control, Text_View value) override {
    if (Row_Of(control).Type == Control_Type::Drop_Down_List) return Pick(control, value);
    if (Row_Of(control).Type == Control_Type::Option_Button) return Press(control);
    Text line(value);
    std::size_t caret = line.size();
    Cut_To_One_Line(line, caret);
    Type(control, line);
  }
  void Close() override { Screen.Close(); }

  void Choose(Text_View entry, Text_View choice) override {
    for (const Menu_Row& row : Menu_Table) {
      if (row.Caption == entry) Screen.Choose(row.Id, Text(choice));
    }
  }
  Lines Menu() override {
    Lines entries;
    for (const Menu_Row& row : Menu_Table) {
      if (!Screen.Can_Choose(row.Id)) continue;
      const bool checked = row.Kind == Menu_Kind::Check_Mark && Screen.Whole_Route();
      entries.push_back(Concatenate({checked ? u"x " : u"", row.Caption}));
    }
    return entries;
  }
  Lines Choices() override { return Screen.Restorable(); }

  void Answer_With_Cancel() override { Screen.Box_Answers.push_back(Answer_Ok + 1); }
  void Save_As(Text_View path) override { Screen.Save_File_Names.emplace_back(path); }
  void Open_Folder(Text_View path) override { Screen.Folders.emplace_back(path); }

  bool Visible() const override { return Screen.Visible(); }
  bool Takes_Input(Control control) const override { return Screen.Takes_Input(control); }
  Text Shown_Text(Control control) const override {
    const Text_View caption = Row_Of(control).Caption;
    return caption.empty() ? Screen.Read_Text(control) : Text(caption);
  }
  Lines Entries(Control list) const override {
    Lines entries;
    for (std::size_t row = 0; row < Screen.List(list).Count(); ++row) {
      entries.push_back(Screen.List(list).Entry(row));
    }
    return entries;
  }
  bool Hourglass() const override { return Screen.Shown_Pointer() == Pointer::Hourglass; }
  Lines Boxes() const override {
    Lines boxes;
    for (const auto& [message, style, title] : Screen.Boxes()) {
      boxes.push_back(Box_Text(title, style, message));
    }
    return boxes;
  }
  Window& Seam() override { return Screen; }

 private:
  Memory_Window Screen;
};

}  // namespace

std::unique_ptr<Window_User> Make_User() {
  return std::make_unique<Memory_Window_User>();
}

}  // namespace rivelt
