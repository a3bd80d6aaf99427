#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "text/block_walker.h"
#include "text/letter_case.h"
#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

TEST(Find_Text, Every_Place_In_Texts_Of_Any_Length_Agrees_With_A_Naive_Search) {
  // Near misses on both sides of a block's end: the first and last letter alone, and units that
  // differ from the target in the case bit without being letters.
  const Text filler = u"T.h t{[H`@(\x0154\x0174";
  for (const Text_View target : {u"TrackObj", u"(", u"[", u"Th", u"@"}) {
    Text text;
    for (std::size_t length = 0; length < 200; text += filler[length++ % filler.size()]) {
      for (const Text& whole : {text, text + u"tRACKoBJ("}) {
        for (const std::size_t start : {std::size_t{1}, std::size_t{64}, length + 1}) {
          const std::size_t hit = Upper_Text(whole).find(Upper_Text(target), start - 1);
          const auto expected = static_cast<Position>(hit + 1);  // 0 for none
          ASSERT_EQ(Find_Text(static_cast<Position>(start), whole, target), expected) << length;
        }
      }
    }
  }
  EXPECT_THROW(Find_Text(0, u"abc", u"a"), Failure);
}

TEST(Cuts, Beyond_The_End_Is_Nothing_Before_The_Start_A_Failure_And_Every_Blank_Splits) {
  EXPECT_EQ(Mid_Text(u"abc", 9), u"");
  EXPECT_THROW(Mid_Text(u"abc", 0), Failure);
  EXPECT_THROW(Left_Text(u"abc", -1), Failure);
  EXPECT_EQ(Split_Text(u" a\t1\r\n  b"), (std::vector<Text_View>{u"", u"a\t1\r\n", u"", u"b"}));
}

TEST(Text_Value, Reads_The_Number_At_The_Start_If_It_Is_In_Range_And_Nothing_Behind_It) {
  const std::pair<Double, std::vector<Text_View>> cases[] = {
      {0, {u"", u"x12", u"--7", u".", u"-", u"e5", u"& 12", u"&x", u"1e-400", u"0e99999999999999"}},
      {7, {u"+7", u"7e", u"7e+", u"7 elephants", u"007"}},
      {-7, {u"- 7", u"-7("}},
      {12, {u"\t\r\n1\n2", u"12 Dyntrack"}},
      {1234, {u" 12 34)"}},
      {.5, {u".5.5", u"5d-1"}},
      {1, {u"1,5", u"0.000001e6"}},
      {100, {u"1D+2x", u"1e00000000000000000000002", u"1e2", u"1 E 2 "}},
      {31, {u"&H1f)", u"&O37 8"}},
      {4294967295.0, {u" &hFFFFFFFF"}},
      {42949672950.0, {u"4294967295 0"}},
  };
  for (const auto& [value, sources] : cases) {
    for (const Text_View source : sources) EXPECT_EQ(Text_Value(source), value) << To_Utf8(source);
  }
  for (const Text& text : {Text(u"1e309"), Text(u"-1e99999999999999999999"), u"1" + Text(400, u'0'),
                           u"&H" + Text(300, u'F')})
    EXPECT_THROW(Text_Value(text), Failure) << To_Utf8(text);
  EXPECT_EQ(Text_Value(u"0." + Text(400, u'0') + u"1e400"), 0.1);
  EXPECT_EQ(Text_Value(u"1" + Text(400, u'0') + u"e-400"), 1);
}

TEST(Number_Text, Fifteen_Digits_With_A_Blank_Or_A_Sign) {
  Text written;
  for (const Double number : {-0.0, 999999999999999.0, 999999999999999.9, -1.5e20,
                              1.7976931348623157e308, -0.25, 0.001, 123456789.987654321, 0.1 + 0.2})
    written += Number_Text(number) + u"|";
  EXPECT_EQ(written,
            u" 0| 999999999999999| 1E+15|-1.5E+20| 1.79769313486232E+308|-.25| .001|"
            u" 123456789.987654| .3|");
}

TEST(Round_Long, Halves_Go_To_The_Even_Neighbour_And_The_Range_Is_A_Longs) {
  const std::pair<Double, Long> cases[] = {
      {2.5, 2}, {3.5, 4}, {-2.5, -2}, {2147483647.4, 2147483647}, {-2147483648.5, -2147483648}};
  for (const auto& [number, rounded] : cases) EXPECT_EQ(Round_Long(number), rounded) << number;
  for (const Double number : {2147483647.5, -2147483649.0, 1e300})
    EXPECT_THROW(Round_Long(number), Failure) << number;
}

TEST(Walk_Block, Ends_On_The_Balancing_Bracket_Or_Fails) {
  EXPECT_THROW(Walk_Block(u"( ( )", 1), Failure);
  for (Position length = 0; length < 200; ++length) {
    const Text inside(static_cast<std::size_t>(length), u'*');
    ASSERT_EQ(Walk_Block(u"((" + inside + u")" + inside + u")", 1), 2 * length + 4);
  }
}

TEST(Find_Blocks, Every_Block_Has_The_Bracket_That_Closes_It) {
  // The keyword, "(" and ")" of each block.
  const std::pair<Text_View, std::vector<std::vector<Position>>> cases[] = {
      {u") ) k ( ( ) ) )", {{5, 7, 13}}},
      {u"K(k( ( ) ) k )(k())", {{1, 2, 14}, {3, 4, 10}, {12, 15, 19}, {16, 17, 18}}},
      {u"k k ( ) k k", {{1, 5, 7}, {3, 5, 7}, {9, 0, 0}, {11, 0, 0}}},
      {u"k ( k ) k k ( k", {{1, 3, 7}, {5, 13, 0}, {9, 13, 0}, {11, 13, 0}, {15, 0, 0}}},
      {u"k ( k ( ) (k(", {{1, 3, 0}, {5, 7, 9}, {12, 13, 0}}},
  };
  for (const auto& [source, found] : cases) {
    std::vector<std::vector<Position>> blocks;
    for (const Block& block : Find_Blocks(source, u"k")) {
      blocks.push_back({block.Keyword, block.Open, block.Close});
    }
    EXPECT_EQ(blocks, found) << To_Utf8(source);
  }
}

TEST(Strip_Blocks, The_Blocks_Of_The_Tag_Go_And_All_Else_Stays) {
  const std::pair<Text_View, Text_View> cases[] = {
      {u"a\r\n\t_skip(x)\r\nb", u"a\r\n\t\r\nb"},
      {u"_SKIP ( _SKIP ( ) ) a _SKIP ( )", u" a "},
      {u"_SKIP ( \"(\" a ) b ) ) c", u" ) c"},
      {u"x _SKIP words ( a ) b", u"x  b"},
      {u"x _SKIP y ) z", u"x  z"},             // no "(": the walk starts at the front
      {u"a ) b _SKIP y ) z", u"a ) b  b  z"},  // a surplus ")" there is where it ends
      {u")) long before _SKIP )", u")) long before ) long before  long before "},
  };
  for (const auto& [source, stripped] : cases) {
    EXPECT_EQ(Strip_Blocks(source, u"_SKIP"), stripped) << To_Utf8(source);
  }
  EXPECT_THROW(Strip_Blocks(u"a _SKIP ( b", u"_SKIP"), Failure);
  EXPECT_THROW(Strip_Blocks(u"( a ) _SKIP b", u"_SKIP"), Failure);
  EXPECT_THROW(Strip_Blocks(Text(10000, u')') + u"_SKIP )", u"_SKIP"), Failure);
}

TEST(Fold_Case, Letters_With_A_Simple_Counterpart_Are_One) {
  EXPECT_EQ(Fold_Case(u"aZ\xC4\x0100\x0394\x0416\x0178\x01C4\x1E9E\U00010400"),
            Fold_Case(u"Az\xE4\x0101\x03B4\x0436\xFF\x01C6\xDF\U00010428"));
  using Two = std::pair<Text_View, Text_View>;
  for (const auto& [first, second] :
       {Two{u"\x0130", u"i"}, {u"\xD7", u"\xF7"}, {u"[", u"{"}, {u"ss", u"\xDF"}, {u"a ", u"a"}})
    EXPECT_NE(Fold_Case(first), Fold_Case(second)) << To_Utf8(first);
}

TEST(Utf8, Every_Byte_Returns_And_Odd_Ones_Become_Lone_Surrogates) {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  bytes +=
      "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x9A\x82\xC0\x80\xE0\x9F\xBF\xF0\x8F\xBF\xBF\xED\xA0\x80\xF4\x90"
      "\x80\x80\xE2\x82";
  EXPECT_EQ(To_Original_Bytes(From_Utf8(bytes)), bytes);
  EXPECT_EQ(From_Utf8("\xC3\xA4\xFF\xF0\x9F\x9A\x83"), u"\xE4\xDCFF\U0001F683");
  for (const Text text : {u"a\xD800z", u"a\xDC7Fz", u"a\xDD00z"})
    EXPECT_EQ(To_Original_Bytes(text), "a\xEF\xBF\xBDz");
  for (const Text text : {u"a\xD800z", u"a\xDC80z", u"a\xDCFFz", u"a\xDFFFz"})
    EXPECT_EQ(To_Utf8(text), "a\xEF\xBF\xBDz");
}

}  // namespace
}  // namespace rivelt
