#include "app/main.h"

#include <memory>
#include <utility>

namespace rivelt {
namespace {

std::unique_ptr<frmMain> Module_Form;

}  // namespace

frmMain& Main(Window& window, Registry& registry, Create_File_System_Object create_object) {
  Module_Form = std::make_unique<frmMain>(window, registry, std::move(create_object));
  window.Show();
  Module_Form->Form_Init();
  return *Module_Form;
}

}  // namespace rivelt
