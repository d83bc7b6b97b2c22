#include "app/shell/app_icon.h"

#include "app/shell/notifier_adaptor.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

TEST(StatusIconPicture, IsThePictureOfTheProgram18PointsHigh) {
    const auto [icon, description] = statusIcon();
    EXPECT_EQ(icon.pixmap(QSize(64, 64), 1.0).size(), QSize(18, 18)) << "it is not scaled up";
    EXPECT_EQ(icon.pixmap(QSize(18, 18), 2.0).size(), QSize(32, 32)) << "as it is stored";
    EXPECT_TRUE(description.isEmpty());
}

TEST(StatusIconPicture, IsALinkWithTheProductsNameWhenThePictureIsDamaged) {
    for (const auto* damaged : {"", "no base64!", "bm90IGEgcGljdHVyZQ=="}) {
        const auto [icon, description] = statusIcon(damaged);
        EXPECT_FALSE(icon.pixmap(18, 18).isNull()) << damaged;
        EXPECT_EQ(description, "Brindlefox Apple Bridge (link)");
    }
}

TEST(NotifierPicture, IsAlphaRedGreenBlueInTheOrderOfTheNetwork) {
    QPixmap pixmap(2, 1);
    pixmap.fill(QColor(0x11, 0x22, 0x33));
    const auto pictures = picturesOf(QIcon(pixmap));
    ASSERT_EQ(pictures.size(), 1);
    EXPECT_EQ(pictures[0].width, 2);
    EXPECT_EQ(pictures[0].height, 1);
    EXPECT_EQ(pictures[0].pixels, QByteArray("\xff\x11\x22\x33\xff\x11\x22\x33"));
}

} // namespace
} // namespace bridge
