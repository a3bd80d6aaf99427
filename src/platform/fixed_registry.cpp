#include <cstring>
#include <utility>

#include "platform/machine.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr Long Type_Of_Text = 1;
constexpr Long Status_Invalid_Handle = 6;
constexpr Long Status_More_Data = 234;

// Has the same value under every name in every key.
class One_Value_Registry : public Registry {
 public:
  explicit One_Value_Registry(const std::string& text) : Value(text + '\0') {}

  Long RegOpenKeyExA(Registry_Key, std::string_view, Long, Long, Registry_Key& key) override {
    key = The_Key;
    return Registry_Success;
  }

  Long RegQueryValueExA(Registry_Key key, std::string_view, Long, Long& type, char* data,
                        Long& size) override {
    if (key != The_Key) return Status_Invalid_Handle;
    type = Type_Of_Text;
    const Long room = std::exchange(size, static_cast<Long>(Value.size()));
    if (data == nullptr) return Registry_Success;
    if (room < size) return Status_More_Data;
    std::memcpy(data, Value.data(), Value.size());
    return Registry_Success;
  }

  Long RegCloseKey(Registry_Key key) override {
    return key == The_Key ? Registry_Success : Status_Invalid_Handle;
  }

  Text Wide(std::string_view narrow) const override { return From_Utf8(narrow); }

 private:
  static constexpr Registry_Key The_Key = 1;

  std::string Value;
};

}  // namespace

std::unique_ptr<Registry> Fixed_Registry(const std::string& root) {
  return std::make_unique<One_Value_Registry>(root);
}

}  // namespace rivelt
