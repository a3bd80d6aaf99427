// A registry with the same text under every name in every key: the installation that a user names,
// or that a test has made.

#pragma once

#include <string>

#include "system/registry_service.h"

namespace rivelt {

class Fixed_Registry : public Registry {
 public:
  // In UTF-8.
  explicit Fixed_Registry(const std::string& text) : Value(text + '\0') {}

  Long RegOpenKeyExA(Registry_Key root, std::string_view subkey, Long options, Long access,
                     Registry_Key& key) override;
  Long RegQueryValueExA(Registry_Key key, std::string_view value_name, Long reserved, Long& type,
                        char* data, Long& size) override;
  Long RegCloseKey(Registry_Key key) override;
  Text Wide(std::string_view narrow) const override;

 private:
  std::string Value;
};

}  // namespace rivelt
