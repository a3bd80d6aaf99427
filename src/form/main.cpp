#include "form/main.h"

#include <utility>

namespace rivelt {

std::unique_ptr<frmMain> Main(Window& window, Registry& registry,
                              Create_File_System_Object create_object) {
  auto form = std::make_unique<frmMain>(window, registry, std::move(create_object));
  window.Show();
  form->Form_Init();
  return form;
}

}  // namespace rivelt
