// Where the registry's one value comes from on a Linux machine.

#pragma once

#include <map>
#include <string>

#include "platform/linux/registry_text.h"
#include "system/registry_service.h"

namespace rivelt {

// The local machine's keys as a Wine prefix keeps them. A key that is both under its name and
// under "Wow6432Node", where 32-bit installers leave it, has the values of both; the first counts
// where both have one of the same name. The prefix is read anew each time a key is opened.
class Wine_Registry : public Registry {
 public:
  // A native path.
  explicit Wine_Registry(const std::string& wine_prefix) : File(wine_prefix + "/system.reg") {}

  Long RegOpenKeyExA(Registry_Key root, std::string_view subkey, Long options, Long access,
                     Registry_Key& key) override;
  Long RegQueryValueExA(Registry_Key key, std::string_view value_name, Long reserved, Long& type,
                        char* data, Long& size) override;
  Long RegCloseKey(Registry_Key key) override;
  Text Wide(std::string_view narrow) const override;

 private:
  std::string File;
  std::map<Registry_Key, Registry_Values> Open_Keys;
  Registry_Key Last_Key = 0;
};

// ".wine" in the home of the account that runs the process, as the user database knows it.
std::string Wine_Prefix_Of_Account();

}  // namespace rivelt
