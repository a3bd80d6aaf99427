#include <string>
#include <string_view>

#include "form/frm_main.h"

namespace rivelt {
namespace {

constexpr std::string_view Subkey = "SOFTWARE\\Microsoft\\Microsoft Games\\Train Simulator\\1.0";
constexpr std::string_view Value_Name = "Path";
constexpr Long Query_Value = 1;

constexpr Text_View No_Path = u"the registry has no text for the installation's path";

}  // namespace

bool frmMain::Find_MSTS() try {
  MSTS_Path = u"..";
  Registry_Key key = 0;
  Long size = 0;
  Long type = 0;
  System_Registry.RegOpenKeyExA(Local_Machine, Subkey, 0, Query_Value, key);
  System_Registry.RegQueryValueExA(key, Value_Name, 0, type, nullptr, size);
  if (size < 0) throw Failure(Text(No_Path));
  std::string value(static_cast<std::size_t>(size), '\0');
  const Long status =
      System_Registry.RegQueryValueExA(key, Value_Name, 0, type, value.data(), size);
  System_Registry.RegCloseKey(key);
  if (status == Registry_Success) {
    // The size counts bytes, so the terminating zero is cut off before the text is made wide: in a
    // code page with several bytes a character the wide text is shorter.
    if (size < 1) throw Failure(Text(No_Path));
    value.resize(static_cast<std::size_t>(size) - 1);
    MSTS_Path = System_Registry.Wide(value);
  }
  return true;
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  Fatal_Error(u"Could not locate your MSTS installation!");
  return false;
}

}  // namespace rivelt
