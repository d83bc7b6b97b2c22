#include "app/shell/status_icon.h"
#include "base/base64.h"

#include <gtest/gtest.h>

namespace bridge {

namespace {

uint32_t numberAt(const std::string& bytes, size_t place) {
    uint32_t number = 0;
    for (size_t index = place; index < place + 4; ++index)
        number = number << 8 | static_cast<uint8_t>(bytes.at(index));
    return number;
}

} // namespace

TEST(StatusIcon, IsAWholePngOf32By32Pixels) {
    const auto png = decodeBase64(statusIconBase64);
    ASSERT_TRUE(png);
    EXPECT_EQ(png->substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(png->substr(12, 4), "IHDR");
    EXPECT_EQ(numberAt(*png, 16), 32U);
    EXPECT_EQ(numberAt(*png, 20), 32U);
    // Colour with transparency: the corners of the tile are round.
    EXPECT_EQ(png->at(25), 6);
    EXPECT_EQ(png->substr(png->size() - 8, 4), "IEND");
}

} // namespace bridge
