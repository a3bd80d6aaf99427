#include "platform/linux/registry.h"

#include <gtest/gtest.h>

#include <optional>
#include <sstream>

#include "machine_folder.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using namespace std::string_literals;

std::optional<Registry_Value> Value_Of_Line(const std::string& lines) {
  const std::string file =
      "WINE REGISTRY Version 2\n\n[Software\\\\Games\\\\1.0] 1017\n#time=1c\n" + lines;
  const auto values = Read_Registry_Key(file, "SOFTWARE\\Games\\1.0");
  const Registry_Value* value = values ? Find_Value(*values, "path") : nullptr;
  return value == nullptr ? std::nullopt : std::optional(*value);
}

TEST(Registry_Text, A_Value_In_Each_Accepted_Form_Is_Read) {
  const struct {
    const char* Line;
    Long Type;
    std::string Data;
  } cases[] = {
      {R"("Path"="C:\\Trains")", 1, "C:\\Trains\0"s},
      {R"("PATH"="")", 1, "\0"s},
      {R"("Path"="a" trailing)", 1, "a\0"s},
      {R"("Path"="\"q\" \\ \n\r\t\e\q")", 1, "\"q\" \\ \n\r\t\x1Bq\0"s},
      {R"("Path"="\xe4\x00e4g\x1F\x20acz\xg")", 1, "\u00E4\u00E4g\x1F\u20ACzxg\0"s},
      {R"("Path"="\xd83d\xde82 \x41Z")", 1, "\U0001F682 AZ\0"s},
      {R"("Path"="a\0b\0012\7")", 1, "a\0b\0012\7\0"s},
      {"\"Path\"=\"\u00E4 \xFF \\\u00E4\"", 1, "\u00E4 \xFF \u00E4\0"s},
      {R"("P\x61th"=str(2):"%A%")", 2, "%A%\0"s},
      {"\"Picture\"=hex:41,\\\n  00,\\\n  22\n\"Size\"=dword:01\n\"Path\"=\"a\"", 1, "a\0"s},
      {"\"Path\"=\"old\"\n\"Path\"=\"new\"", 1, "new\0"s},
      {"\"Path\"=\"old\"\r\n\"Path\"=\"no end\r\n[Other]\n\"Path\"=\"theirs\"", 1, "old\0"s},
  };
  for (const auto& item : cases) {
    const auto value = Value_Of_Line(item.Line);
    ASSERT_TRUE(value) << item.Line;
    EXPECT_EQ(value->Type, item.Type) << item.Line;
    EXPECT_EQ(value->Data, item.Data) << item.Line;
  }
}

TEST(Registry_Text, A_Line_That_Is_No_Value_Is_Passed_Over) {
  std::istringstream names(
      R"(  "Path  "Path"  "Path" "Path\"="x"  Path="x"  @="x"  "Path2"="x"  ;"Path"="x")");
  std::istringstream forms(
      R"~(  "x  "x\  "x\"  x  hex:00  hex(1):41,00,00,00  dword:0000012c  str:x  str(2)"x"  str(2):x
      str(7):"x")~");
  for (std::string line; names >> line;) EXPECT_FALSE(Value_Of_Line(line)) << line;
  for (std::string form; forms >> form;) EXPECT_FALSE(Value_Of_Line("\"Path\"=" + form)) << form;
  for (const char* key :
       {"[Software\\\\Games]", "[Software\\\\Games\\\\1.0", "[Software\\\\Games\\1.0]"})
    EXPECT_FALSE(Value_Of_Line(std::string(key) + "\n\"Path\"=\"x\"")) << key;
}

class Wine_Registry_Test : public testing::Test {
 protected:
  // "status size data" as the program's two queries tell them; the size is the first one's.
  static std::string Query(Registry& registry, std::string_view subkey, Long room = 100) {
    Registry_Key key = 0;
    Long type = 0;
    Long size = 0;
    std::string data(static_cast<std::size_t>(room), '.');
    registry.RegOpenKeyExA(Local_Machine, subkey, 0, 1, key);
    registry.RegQueryValueExA(key, "Path", 0, type, nullptr, size);
    const Long status = registry.RegQueryValueExA(key, "Path", 0, type, data.data(), room);
    EXPECT_EQ(room, status == 0 || status == Status_More_Data ? size : 100);
    registry.RegCloseKey(key);
    data.resize(status == 0 ? static_cast<std::size_t>(room) : 0);
    return std::to_string(status) + " " + std::to_string(size) + " " + data;
  }

  Machine_Folder Machine;
  Wine_Registry Prefix{Machine.Native("").native()};
};

TEST_F(Wine_Registry_Test, The_Key_As_Named_Counts_Before_That_Of_32_Bit_Programs) {
  EXPECT_EQ(Query(Prefix, "Software\\A"), "6 0 ");
  Machine.Plant(u"system.reg",
                "[Software\\\\A]\n\"Path\"=\"a\"\n"
                "[Software\\\\Wow6432Node\\\\A]\n\"Path\"=\"a32\"\n"
                "[Software\\\\B]\n\"Other\"=\"b\"\n"
                "[Software\\\\Wow6432Node\\\\B]\n\"Path\"=\"b32\"\n"
                "[Software\\\\D]\n\"Other\"=\"d\"\n"
                "[System\\\\E]\n\"Path\"=\"e\"\n");
  EXPECT_EQ(Query(Prefix, "SOFTWARE\\A"), "0 2 a\0"s);
  EXPECT_EQ(Query(Prefix, "software\\b"), "0 4 b32\0"s);
  EXPECT_EQ(Query(Prefix, "SOFTWARE\\D"), "2 0 ");
  EXPECT_EQ(Query(Prefix, "SYSTEM\\E"), "0 2 e\0"s);
  EXPECT_EQ(Query(Prefix, "SOFTWARE\\None"), "6 0 ");
  EXPECT_EQ(Prefix.Wide("\u00E4\xFF"), From_Utf8("\u00E4\xFF"));
}

TEST_F(Wine_Registry_Test, The_Status_Tells_Why_There_Is_No_Value) {
  Machine.Plant(u"system.reg", "[Software\\\\A]\n\"Path\"=\"abc\"\n");
  Registry_Key key = 77;
  EXPECT_EQ(Prefix.RegOpenKeyExA(Local_Machine, "SOFTWARE\\None", 0, 1, key), 2);
  EXPECT_EQ(Prefix.RegOpenKeyExA(0x80000001, "SOFTWARE\\A", 0, 1, key), 6);
  EXPECT_EQ(key, 77u);
  EXPECT_EQ(Query(Prefix, "SOFTWARE\\A", 3), "234 4 ");
  EXPECT_EQ(Query(Prefix, "SOFTWARE\\A", 4), "0 4 abc\0"s);
  EXPECT_EQ(Prefix.RegCloseKey(key), 6) << "none was opened";
}

}  // namespace
}  // namespace rivelt
