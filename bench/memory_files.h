// An installation of one catalogue and no route that lies in memory.

#pragma once

#include <memory>

#include "app/file_service.h"
#include "app/registry.h"
#include "text/text.h"

namespace rivelt::bench {

// The catalogue must outlive what is made.
std::unique_ptr<File_System_Object> Make_Memory_Files(Text_View catalogue);

// Has no value for the program.
class Empty_Registry : public Registry {
 public:
  Long RegOpenKeyExA(Registry_Key, std::string_view, Long, Long, Registry_Key&) override {
    return 1;
  }
  Long RegQueryValueExA(Registry_Key, std::string_view, Long, Long&, char*, Long&) override {
    return 1;
  }
  Long RegCloseKey(Registry_Key) override { return 1; }
  Text Wide(std::string_view) const override { return {}; }
};

}  // namespace rivelt::bench
