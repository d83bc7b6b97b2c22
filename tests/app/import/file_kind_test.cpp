#include "app/import/file_kind.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

TEST(FileKind, IsToldByWhatBeginsFirst) {
    for (const auto* text : {"BEGIN:VCARD", "begin:vCard\r\n", "\r\n \n\nBEGIN:VCARD\n", " Begin : VCARD \r",
                             "FN:A\nBEGIN:VCARD\n", "BEGIN:VCARD\nBEGIN:VCALENDAR\n"})
        EXPECT_EQ(kindOf(text), FileKind::contacts) << text;
    for (const auto* text : {"BEGIN:VCALENDAR", "begin:vcalendar\r", "BEGIN:VEVENT\n", "\n\nBEGIN:VTODO\nBEGIN:VCARD\n",
                             "BEGIN:VTIMEZONE", "BEGIN:VJOURNAL", "BEGIN:VFREEBUSY"})
        EXPECT_EQ(kindOf(text), FileKind::calendar) << text;
}

TEST(FileKind, IsNoneOfOtherTexts) {
    for (const auto* text : {"", "\n", "BEGIN", "BEGIN:", "BEGIN:VCARDS", "VCARD", "X-BEGIN:VCARD", "NOTE:BEGIN:VCARD",
                             "BEGIN VCARD", "END:VCARD\n", "B\0E\0G\0I\0N\0"})
        EXPECT_EQ(kindOf(text), std::nullopt) << text;
}

} // namespace
} // namespace bridge
