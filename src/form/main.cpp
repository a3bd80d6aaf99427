#include "form/main.h"

#include <utility>

namespace rivelt {

std::unique_ptr<frmMain> Main(Window& window, Registry& registry,
                              Create_File_System_Object create_object,
                              Open_Installation& installation) {
  auto form = std::make_unique<frmMain>(window, registry, std::move(create_object), installation);
  window.Show();
  form->Form_Init();
  return form;
}

}  // namespace rivelt
