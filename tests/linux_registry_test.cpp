#include "platform/linux/registry.h"

#include <sstream>

#include "machine_folder.h"
#include "registry_query.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

using namespace std::string_literals;

class Linux_Registry : public testing::Test {
 protected:
  std::string Value_Of_Line(const std::string& lines) {
    Machine.Plant(u"system.reg",
                  "WINE REGISTRY Version 2\n\n[Software\\\\Games\\\\1.0] 1017\n#time=1c\n" + lines);
    return Query(Prefix, "SOFTWARE\\Games\\1.0");
  }

  Machine_Folder Machine;
  Wine_Registry Prefix{std::filesystem::path(Machine.Path(u"")).native()};
};

TEST_F(Linux_Registry, A_Value_In_Each_Accepted_Form_Is_Read) {
  const std::pair<const char*, std::string> cases[] = {
      {R"("Path"="C:\\Trains")", "1 C:\\Trains\0"s},
      {R"("PATH"="")", "1 \0"s},
      {R"("Path"="\"q\" \\ \n\r\t\e\q")", "1 \"q\" \\ \n\r\t\x1Bq\0"s},
      {R"("Path"="\xe4\x00e4g\x1F\x20acz\xg")", "1 \u00E4\u00E4g\x1F\u20ACzxg\0"s},
      {R"("Path"="\xd83d\xde82 \x41Z")", "1 \U0001F682 AZ\0"s},
      {R"("Path"="a\0b\0012\7")", "1 a\0b\0012\7\0"s},
      {"\"Path\"=\"\u00E4 \xFF \\\u00E4\"", "1 \u00E4 \xFF \u00E4\0"s},
      {R"("P\x61th"=str(2):"%A%")", "2 %A%\0"s},
      {"\"Picture\"=hex:41,\\\n  00,\\\n  22\n\"Size\"=dword:01\n\"Path\"=\"a\"", "1 a\0"s},
      {"\"Path\"=\"old\"\n\"Path\"=\"new\"", "1 new\0"s},
      {"\"Path\"=\"ours\"\r\n[Other]\n\"Path\"=\"theirs\"", "1 ours\0"s},
      {"\"Path\"=\"old\"\n\"Path\"=\"no end", "0 "},
      {R"("Path"=str(7):"x")", "7 x\0"s},
  };
  for (const auto& [lines, value] : cases) EXPECT_EQ(Value_Of_Line(lines), value) << lines;
}

TEST_F(Linux_Registry,
       A_Line_Without_A_Name_Is_Passed_Over_And_A_Value_That_Is_No_String_Has_No_Data) {
  std::istringstream names(
      R"(  "Path  "Path"  "Path" "Path\"="x"  Path="x"  @="x"  "Path2"="x"  ;"Path"="x")");
  std::istringstream forms(
      R"~(  "x  "x\  "x\"  x  hex:00  hex(1):41,00,00,00  dword:0000012c  str:x  str(2)"x"  str(2):x
      str(x):"x")~");
  const std::string none = "no value: 2";
  for (std::string line; names >> line;) EXPECT_EQ(Value_Of_Line(line), none) << line;
  for (std::string form; forms >> form;) EXPECT_EQ(Value_Of_Line("\"Path\"=" + form), "0 ") << form;
  for (const std::string key :
       {"[Software\\\\Games]", "[Software\\\\Games\\\\1.0", "[Software\\\\Games\\1.0]"})
    EXPECT_EQ(Value_Of_Line(key + "\n\"Path\"=\"x\""), none) << key;
}

TEST_F(Linux_Registry, The_Key_As_Named_Counts_Before_That_Of_32_Bit_Programs) {
  EXPECT_EQ(Query(Prefix, "Software\\A"), "no key: 2") << "no file";
  Machine.Plant(u"system.reg",
                "[Software\\\\A]\n\"Path\"=\"a\"\n"
                "[Software\\\\Wow6432Node\\\\A]\n\"Path\"=\"a32\"\n"
                "[Software\\\\B]\n\"Other\"=\"b\"\n"
                "[Software\\\\Wow6432Node\\\\B]\n\"Path\"=\"b32\"\n"
                "[System\\\\E]\n\"Path\"=\"e\"\n");
  EXPECT_EQ(Query(Prefix, "SOFTWARE\\A"), "1 a\0"s);
  EXPECT_EQ(Query(Prefix, "software\\b"), "1 b32\0"s);
  EXPECT_EQ(Query(Prefix, "SYSTEM\\E"), "1 e\0"s);
  EXPECT_EQ(Query(Prefix, "SOFTWARE\\None"), "no key: 2");
  EXPECT_EQ(Query(Prefix, "software\\b", 3), "234 ....");
  Registry_Key key = 0;
  EXPECT_EQ(Prefix.RegOpenKeyExA(0x80000001, "SOFTWARE\\A", 0, 1, key), Status_Invalid_Handle);
  EXPECT_EQ(Prefix.Wide("\u00E4\xFF"), From_Utf8("\u00E4\xFF"));
}

}  // namespace
}  // namespace rivelt
