#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bridge {

// A rectangle of cells. Columns and rows count from 1.
struct NumbersRange {
    std::string text; // in upper case, without space around it: "B2:C3"
    int64_t firstColumn = 1;
    int64_t firstRow = 1;
    int64_t columns = 1;
    int64_t rows = 1;
};

// One cell ("A1"), or two with a colon between, the upper left one first, in upper or lower case. Columns have up to
// three letters, rows up to six digits. Throws AppleBridgeError malformedRequest for anything else.
NumbersRange parseNumbersRange(std::string_view text);

// "A1" for the first of all, "AA7" for the 27th of the seventh row.
std::string cellName(int64_t column, int64_t row);

} // namespace bridge
