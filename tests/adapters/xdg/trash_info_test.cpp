#include "adapters/xdg/trash_info.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

TEST(TrashInfo, EncodesEveryByteThatIsNotPlain) {
    setenv("TZ", "UTC", 1);
    tzset();
    EXPECT_EQ(trashInfo("/home/ada/50% off\n\xc3\xab~(1).txt", 1786706921),
              "[Trash Info]\nPath=/home/ada/50%25%20off%0A%C3%AB~(1).txt\nDeletionDate=2026-08-14T11:28:41\n");
    unsetenv("TZ");
    tzset();
}

TEST(TrashName, IsTheItemsOwnWhereItFits) {
    EXPECT_EQ(trashName("note.txt", ""), "note.txt");
    EXPECT_EQ(trashName("note.txt", "2"), "note.txt.2");
}

TEST(TrashName, LeavesRoomForTheInfoFilesEnding) {
    EXPECT_EQ(trashName(std::string(255, 'a'), "").size(), 245u);
    EXPECT_EQ(trashName(std::string(255, 'a'), "20"), std::string(242, 'a') + ".20");
}

TEST(TrashName, IsNotCutInsideACharacter) {
    // 244 letters, then a character of three bytes that would reach over the end.
    EXPECT_EQ(trashName(std::string(244, 'a') + "\xe2\x82\xac" + "bcd", ""), std::string(244, 'a'));
}

} // namespace
} // namespace bridge
