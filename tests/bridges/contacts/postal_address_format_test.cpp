#include "bridges/contacts/postal_address_format.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

PostalAddress address(std::string country, std::string street, std::string city, std::string state = "",
                      std::string postalCode = "", std::string subLocality = "") {
    PostalAddress made;
    made.isoCountryCode = std::move(country);
    made.street = std::move(street);
    made.subLocality = std::move(subLocality);
    made.city = std::move(city);
    made.state = std::move(state);
    made.postalCode = std::move(postalCode);
    return made;
}

TEST(PostalAddressFormat, IsThatOfTheCountry) {
    EXPECT_EQ(formatPostalAddress(address("DE", "Hauptstr. 5", "Berlin", "", "10115")), "Hauptstr. 5\n10115 Berlin");
    EXPECT_EQ(formatPostalAddress(address("us", "548 Market St", "San Francisco", "CA", "94104")),
              "548 Market St\nSan Francisco, CA 94104");
    EXPECT_EQ(formatPostalAddress(address("GB", "221B Baker St", "London", "", "NW1 6XE")),
              "221B Baker St\nLondon\nNW1 6XE");
    EXPECT_EQ(formatPostalAddress(address("FR", "5 rue de Rivoli", "Paris", "", "75001")),
              "5 rue de Rivoli\n75001 Paris");
    EXPECT_EQ(formatPostalAddress(address("BR", "Rua A, 10", "São Paulo", "SP", "01310-100", "Centro")),
              "Rua A, 10\nCentro\nSão Paulo-SP\n01310-100");
    EXPECT_EQ(formatPostalAddress(address("IN", "12 MG Road", "Bengaluru", "Karnataka", "560001")),
              "12 MG Road\nBengaluru 560001\nKarnataka");
    EXPECT_EQ(formatPostalAddress(address("CH", "Bahnhofstr. 1", "Zürich", "", "8001")),
              "Bahnhofstr. 1\nCH-8001 Zürich");
    EXPECT_EQ(formatPostalAddress(address("HU", "Fő u. 1", "Budapest", "", "1011")), "Budapest\nFő u. 1\n1011");
    EXPECT_EQ(formatPostalAddress(address("TR", "Cadde 1", "Kadıköy", "İstanbul", "34710")),
              "Cadde 1\n34710 Kadıköy/İstanbul");
    EXPECT_EQ(formatPostalAddress(address("CA", "1 Rue X", "Québec", "QC", "G1V 2M2")), "1 Rue X\nQuébec QC G1V 2M2");
    EXPECT_EQ(formatPostalAddress(address("RU", "ул. Ленина, 1", "Москва", "Московская обл.", "101000")),
              "ул. Ленина, 1\nМосква\nМосковская обл.\n101000");
}

TEST(PostalAddressFormat, GoesFromTheLargeToTheSmallInEastAsianLetters) {
    EXPECT_EQ(formatPostalAddress(address("JP", "丸の内1-1", "千代田区", "東京都", "100-0005")),
              "〒100-0005\n東京都千代田区\n丸の内1-1");
    EXPECT_EQ(formatPostalAddress(address("CN", "长安街1号", "北京市", "北京", "100000", "东城区")),
              "100000\n北京北京市东城区\n长安街1号");
    EXPECT_EQ(formatPostalAddress(address("KR", "세종대로 110", "중구", "서울특별시", "04524")),
              "서울특별시 중구\n세종대로 110\n04524");
    EXPECT_EQ(formatPostalAddress(address("TW", "信義路5段7號", "信義區", "台北市", "110")),
              "110\n台北市信義區\n信義路5段7號");
}

TEST(PostalAddressFormat, GoesTheOtherWayThereInLatinLetters) {
    EXPECT_EQ(formatPostalAddress(address("JP", "1-1 Marunouchi", "Chiyoda-ku", "Tokyo", "100-0005")),
              "1-1 Marunouchi\nChiyoda-ku, Tokyo\n100-0005");
    EXPECT_EQ(formatPostalAddress(address("CN", "1 Chang'an Ave", "Beijing", "Beijing", "100000")),
              "1 Chang'an Ave\nBeijing\nBeijing, 100000");
    EXPECT_EQ(formatPostalAddress(address("KR", "110 Sejong-daero", "Jung-gu", "Seoul", "04524")),
              "110 Sejong-daero\nJung-gu\nSeoul\n04524");
}

TEST(PostalAddressFormat, LeavesNothingOut) {
    EXPECT_EQ(formatPostalAddress(address("DE", "Dorfstr. 1", "Ort", "Bayern", "80331", "Ortsteil")),
              "Dorfstr. 1\nOrtsteil\n80331 Ort\nBayern");
    EXPECT_EQ(formatPostalAddress(address("GB", "1 Hill", "Guildford", "Surrey", "GU1")),
              "1 Hill\nGuildford\nSurrey\nGU1");
    EXPECT_EQ(formatPostalAddress(address("AE", "Street 1", "Deira", "Dubai", "PO 5")), "Street 1\nDeira\nDubai\nPO 5");
    EXPECT_EQ(formatPostalAddress(address("HK", "1 Queen's Rd", "Central", "Hong Kong Island", "", "Block")),
              "1 Queen's Rd\nBlock\nCentral\nHong Kong Island");
    EXPECT_EQ(formatPostalAddress(address("HK", "皇后大道", "中環", "香港島", "", "區")), "香港島\n中環\n區\n皇后大道");
    EXPECT_EQ(formatPostalAddress(address("MO", "Rua 1", "Macau", "", "9")), "Rua 1\nMacau\n9");
    EXPECT_EQ(formatPostalAddress(address("XX", "Street", "Town", "State", "1", "Part")),
              "Street\nPart\nTown 1\nState");
}

TEST(PostalAddressFormat, LeavesNoSeparatorWithoutItsParts) {
    EXPECT_EQ(formatPostalAddress(address("US", "", "Town", "", "12345")), "Town 12345");
    EXPECT_EQ(formatPostalAddress(address("US", "1 St", "", "CA", "")), "1 St\nCA");
    EXPECT_EQ(formatPostalAddress(address("US", "1 St", "Town", "", "")), "1 St\nTown");
    EXPECT_EQ(formatPostalAddress(address("CH", "1 St", "Zug", "", "")), "1 St\nZug");
    EXPECT_EQ(formatPostalAddress(address("BR", "", "", "SP", "1")), "SP\n1");
    EXPECT_EQ(formatPostalAddress(address("GG", "1 St", "", "", "GY1")), "1 St\nGUERNSEY\nGY1");
    EXPECT_EQ(formatPostalAddress(address("GG", "", "", "", "")), "");
}

TEST(PostalAddressFormat, SaysNothingTwice) {
    EXPECT_EQ(formatPostalAddress(address("CH", "1 St", "Zug", "", "CH-6300")), "1 St\nCH-6300 Zug");
    EXPECT_EQ(formatPostalAddress(address("SG", "1 Raffles Pl", "Singapore", "", "048616")),
              "1 Raffles Pl\nSINGAPORE 048616");
    EXPECT_EQ(formatPostalAddress(address("SG", "1 Raffles Pl", "Singapore")), "1 Raffles Pl\nSingapore");
}

TEST(PostalAddressFormat, EndsInTheCountryAsGiven) {
    auto one = address("DE", "Hauptstr. 5", "Berlin", "", "10115");
    one.country = "Allemagne";
    EXPECT_EQ(formatPostalAddress(one), "Hauptstr. 5\n10115 Berlin\nAllemagne");
    EXPECT_EQ(formatPostalAddress(PostalAddress()), "");
    PostalAddress alone;
    alone.country = "France";
    EXPECT_EQ(formatPostalAddress(alone), "France");
}

TEST(PostalAddressFormat, TellsTheCountryByItsName) {
    for (const char* name : {"Germany", "germany ", "Deutschland", "DEU", "de"}) {
        auto one = address("", "Hauptstr. 5", "Berlin", "", "10115");
        one.country = name;
        EXPECT_TRUE(formatPostalAddress(one).starts_with("Hauptstr. 5\n10115 Berlin\n")) << name;
    }
    for (const char* name : {"USA", "U.S.A.", "United States", "United States of America", "US"}) {
        auto one = address("", "1 St", "Town", "CA", "12345");
        one.country = name;
        EXPECT_TRUE(formatPostalAddress(one).starts_with("1 St\nTown, CA 12345\n")) << name;
    }
    for (const char* name : {"UK", "United Kingdom", "GBR"}) {
        auto one = address("", "1 St", "Town", "", "AB1");
        one.country = name;
        EXPECT_TRUE(formatPostalAddress(one).starts_with("1 St\nTown\nAB1\n")) << name;
    }
    auto japan = address("", "丸の内1-1", "千代田区", "東京都", "100-0005");
    japan.country = "日本";
    EXPECT_EQ(formatPostalAddress(japan), "〒100-0005\n東京都千代田区\n丸の内1-1\n日本");
}

TEST(PostalAddressFormat, HasNoEmptyLine) {
    auto one = address("DE", "\n\nHauptstr. 5\n \nHinterhaus\n", " Berlin ", "", " ");
    one.country = "\n";
    EXPECT_EQ(formatPostalAddress(one), "Hauptstr. 5\nHinterhaus\nBerlin");
}

} // namespace
} // namespace bridge
