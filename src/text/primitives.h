// The operations on which all file handling rests: searches, cuts at positions, and the ways
// between text and number. Lengths and positions are in code units, positions count from 1.
//
// A result of type Text_View is part of the argument and lives as long as it does.

#pragma once

#include <initializer_list>
#include <vector>

#include "text/text.h"

namespace rivelt {

// The first occurrence of target that begins at or after start, else 0. ASCII letters that differ
// only in case are equal. Failure: start below 1. The target is plain ASCII and never empty.
Position Find_Text(Position start, Text_View text, Text_View target);

// The first count units, or the whole text if it has no more. Failure: count below 0.
Text_View Left_Text(Text_View text, Position count);

// At most count units from start on; empty after the end. Failure: start below 1, count below 0.
Text_View Mid_Text(Text_View text, Position start, Position count);

// All units from start on; empty after the end. Failure: start below 1.
Text_View Mid_Text(Text_View text, Position start);

// The last count units, or the whole text if it has no more. Failure: count below 0.
Text_View Right_Text(Text_View text, Position count);

// The text without the blanks (and nothing but blanks) at its two ends.
Text_View Trim_Text(Text_View text);

// ASCII letters in upper case. For the endings of file names.
Text Upper_Text(Text_View text);

// Every occurrence of target replaced, code unit by code unit. The target is never empty.
Text Replace_Text(Text_View text, Text_View target, Text_View replacement);

// Cut at every single blank, so two blanks in a row give an empty element. Of the empty text: none.
std::vector<Text_View> Split_Text(Text_View text);

// The elements with one blank between each two: gives back what Split_Text cut.
Text Join_Text(const std::vector<Text>& elements);

// A number at the start of a text.
struct Number_Reading {
  Double Value = 0;         // 0 without a number, infinite beyond the range of a Double
  Position End = 0;         // the units read, the blanks around and inside the number among them
  bool Has_Digits = false;  // else there is no number: nothing at all, or a sign, point or prefix
};

// Reads the number at the start of a text, in time that depends on the number alone. Blanks, tabs
// and line ends are skipped, also inside the number.
Number_Reading Read_Number(Text_View text);

// The value that Read_Number gives. Failure: beyond the range of a Double.
Double Text_Value(Text_View text);

// The number in decimal with up to 15 significant digits, after one blank or a minus sign.
Text Number_Text(Double number);

// The nearest whole number, a half going to the even neighbour. Failure: it does not fit a Long;
// the place is where the number came from.
Long Round_Long(Double number, const char16_t* place = nullptr);

// The parts, one after the other.
Text Concatenate(std::initializer_list<Text_View> parts);

}  // namespace rivelt
