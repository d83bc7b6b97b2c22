#pragma once

#include <string_view>

namespace bridge {

// The icon in the menu bar, 32 by 32 pixels, as the base64 text of a PNG. Written by tools/status-icon.
// clang-format off
inline constexpr std::string_view statusIconBase64 =
    "iVBORw0KGgoAAAANSUhEUgAAACAAAAAgCAYAAABzenr0AAAABmJLR0QA/wD/AP+gvaeTAAAFKklEQVRYhbWXXWxc1RGAvzl3vZtd"
    "23Ecx5jEJSEmCPNAQpofTJq2EQQECpaoRBJsCSGBQIDEQx54oE/7QCUEldKq7VNfQG2URrQSqqhAIeGB0JoQkyjQJBCQf0Ls2CZY"
    "tmPvGu+emT7ser03u2ubxox0tffMmTvznZm55+4RiiWZdPdS/7hAB7AFuAkIuDHxwIhBNyKHu2z0CMmkzk7K7M3O5MEWr/J3sM03"
    "GHAhOR049n6UPNBTANiWPNgSZPVjoHGxXhxGQrIokLKqHwoxomjbJ6+81Cskk257pqZbYMGVR8TTxiD3V/WzyY2QCDyIkJYowyQ4"
    "k23inZkWBnz1YiA+PVk1uV22//r1TswOLWS9Qy7zXOQMDS6NCIgTRARxAvlfETBx/GtmPX+eunPBzIhIR0S975R5zeAJ9xn75QJi"
    "AiqYE1ADByiIA1PAgaC0x3q4u+pbXh6/hyvZREW/JtbhUN1iqpS7UM+zdLPXzmNmmBpmBmqYURibGphhSmF8i7vG63VdrJR0Wd+m"
    "innb6ky1sZLBfv2cPXox75QQhC0CYrWb4rUVJ1lmmUoQTc5Ug3KTbXqJ/XYu51jzAYucs0iI9ZEJnqn9ohJA4MpN1GmKF7Q7n+rr"
    "AioMaIJxX7VoiEcTl9gU/a4sRMTMSprjaTtNDdP5ZhNwBgqZlrt59uLNjFgch3Ff5DIv1Z0Dn4WyjZl7VlCerP2aM+mtJbFKMtDs"
    "x/iZv1S0utxqpu/cQXrzgwz7GKaKV+P9mWbG2zrwsZoFM7E5OsrtkfGSDJQA7NGvIO9oFuKEX8NM6868Pmzva1ZxbdtjTGikFMIk"
    "BNHZPD0/QKBZfu77Q47GNMrvMxsxEYxSAAOy1fX8YaK1pCeiGx/K7Q95iF1bNxMIlQHu8kPEdSb0mr3hW5nSuQ9iyV6Rl+PTN9M1"
    "vSoEETS2EN34cCGb1Q3NPLqhtjLANj8Yqv2QxjmW/Uk+kAFWBmBO/7vxO5h28Tkf6UkSv3waqWnA1JD4cn6xoek6AJutl3GbjuZS"
    "ln/v/6nr8ZarXyEDRfbX64d9jP/e2o7EV4AZ+v0UEqsmsftFzAxZVsctjStDz7vi+q/V8UL6MioczzaXpLpSCWbHvz09Ss2+V5Dq"
    "Biw1CUB0QxvR1l24xHLisWXlS9DkrxFRX6j/KW1iQoO5QLlMlwJcpx+cmOE/Z89R/+RBiMULgIndzyPLakml0+UB6jUV2uu7fOO8"
    "K51P//K758maULPrqbkNJ74CxNF3ZaQSQDq09Z7Vlf83wFg6w6tv/gNc6d/Jo+cvlweIaQazXAOOaIxvNVqx2xejP/TZEOe6joeC"
    "Z6fGeOfC1ZCdDJ85YgDpT//N1NG3ESdE17ZQ2/FcCf0PFVFPw7rtuJqVAKS/Psm1zETIxoVSmE+/1NbfcHAAcwGTPd2F8UxqtMQm"
    "cu9vjnkgeMT6eIbc1+yvn4/y5tljSwKxbnmMD/60G1PPA388wXcpXzztI6Y6AqzOGCC5PXtcglCD3Yj0jaWZGuonNTnB1clMaE6Q"
    "oYipdgPtn7CKQdtChoDLJDCWBgDgm/5eegaulCzKkFMRvB42of0qUa4SLZpeOoAvewd4+2xPCYCI/S0Y6/zV+bqB0XbMVue+o0t/"
    "TaQm+bB3LKzHuvt/etsBAVi7p7NFxXWJcdOSLXseMWEkko3c0/feG32FM8m6B59Y7wP/FrlT8Y8p3YEP9vUf/UsvFJ2OAUgm3ZqP"
    "L+wTkw5gK9DE0hzPhwVOqXF4cEfrW8XH8/8B4KKCKnaKvNMAAAAASUVORK5CYII=";
// clang-format on

} // namespace bridge
