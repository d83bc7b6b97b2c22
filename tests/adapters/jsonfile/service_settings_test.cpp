#include "adapters/jsonfile/service_settings.h"

#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class ServiceSettingsTest : public testing::Test {
protected:
    ServiceSettings read(std::string_view content) {
        putFile(path, content);
        return readServiceSettings(path);
    }
    // Of the setting `key` in a file that holds nothing else.
    std::string fault(const std::string& key, const std::string& value) {
        const auto settings = read("{\"" + key + "\":" + value + "}");
        EXPECT_EQ(settings.faults.size(), 1U) << value;
        EXPECT_FALSE(settings.location || settings.placesServer || settings.directionsServer) << value;
        return settings.faultOf(key);
    }

    TemporaryFolder folder;
    const std::string path = folder.file("services.json");
};

TEST_F(ServiceSettingsTest, AreNotSetWithoutAFile) {
    for (const auto& absent : {path, folder.file("no/folder/services.json")}) {
        const auto settings = readServiceSettings(absent);
        EXPECT_FALSE(settings.location || settings.placesServer || settings.directionsServer);
        EXPECT_THAT(settings.faults, IsEmpty());
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ServiceSettingsTest, HoldWhatTheFileSays) {
    const auto settings = read(R"({"location": {"latitude": 47.14, "longitude": 9.52},
        "placesServer": "https://places.example.org/nominatim/", "directionsServer": "HTTP://[::1]:8002"})");
    EXPECT_EQ(settings.location, (MapCoordinate{47.14, 9.52}));
    EXPECT_EQ(settings.placesServer, "https://places.example.org/nominatim");
    EXPECT_EQ(settings.directionsServer, "HTTP://[::1]:8002");
    EXPECT_THAT(settings.faults, IsEmpty());
    EXPECT_EQ(settings.faultOf("location"), "");
}

TEST_F(ServiceSettingsTest, TakeNullForAbsent) {
    const auto settings = read(R"({"location": null, "placesServer": null, "directionsServer": null})");
    EXPECT_FALSE(settings.location || settings.placesServer || settings.directionsServer);
    EXPECT_THAT(settings.faults, IsEmpty());
}

TEST_F(ServiceSettingsTest, TakeTheEndsOfTheEarth) {
    EXPECT_EQ(read(R"({"location": {"latitude": 90, "longitude": -180}})").location, (MapCoordinate{90, -180}));
    EXPECT_EQ(read(R"({"location": {"latitude": -90, "longitude": 180}})").location, (MapCoordinate{-90, 180}));
}

TEST_F(ServiceSettingsTest, NameThePlaceOfAWrongCoordinate) {
    EXPECT_EQ(fault("location", R"({"latitude": 90.0001, "longitude": 0})"),
              "services.json, .location.latitude: expected a number from -90 to 90");
    EXPECT_EQ(fault("location", R"({"latitude": 1, "longitude": -180.5})"),
              "services.json, .location.longitude: expected a number from -180 to 180");
    EXPECT_THAT(fault("location", R"({"latitude": "47", "longitude": 9})"), HasSubstr(".location.latitude"));
    EXPECT_THAT(fault("location", R"({"latitude": 47})"), HasSubstr(".location.longitude"));
    EXPECT_EQ(fault("location", "[47, 9]"), "services.json, .location: expected an object with latitude and longitude");
}

TEST_F(ServiceSettingsTest, RefuseWhatIsNoAddressOfAWebServer) {
    for (const auto* key : {"placesServer", "directionsServer"})
        for (const auto* value : {R"("")", R"("127.0.0.1:8002")", R"("ftp://h")", R"("http://")", R"("https:///route")",
                                  R"("http://:80")", R"("http://u:p@h")", R"("http://h/?a=b")", R"("http://h#f")",
                                  R"("http://h h")", R"("file:///etc")", R"("http:/h")", "8002", "true", "{}", "[]"})
            EXPECT_EQ(fault(key, value),
                      std::string("services.json, .") + key + ": expected an address such as http://127.0.0.1:8002")
                << value;
}

TEST_F(ServiceSettingsTest, KeepTheOthersWhenOneIsWrong) {
    const auto settings = read(R"({"location": 1, "placesServer": "gopher://h", "directionsServer": "http://h"})");
    EXPECT_FALSE(settings.location);
    EXPECT_FALSE(settings.placesServer);
    EXPECT_EQ(settings.directionsServer, "http://h");
    EXPECT_EQ(settings.faults.size(), 2U);
}

TEST_F(ServiceSettingsTest, TellAMisspeltName) {
    const auto settings = read(R"({"directionServer": "http://h"})");
    EXPECT_EQ(settings.faultOf("directionServer"), "services.json, .directionServer: there is no such setting");
    EXPECT_EQ(settings.faultOf("directionsServer"), "");
}

TEST_F(ServiceSettingsTest, AreAllAbsentWithAFaultInADamagedFile) {
    for (const auto* content : {"", "{", "[]", "null", "\"text\"", "{} {}", "\xff\xfe{\0", R"({"location":)"}) {
        const auto settings = read(content);
        EXPECT_FALSE(settings.location || settings.placesServer || settings.directionsServer) << content;
        EXPECT_THAT(settings.faultOf("directionsServer"), HasSubstr("services.json can't be read: ")) << content;
    }
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(ServiceSettingsTest, AreAbsentWithAFaultWhenTheFileIsAFolder) {
    std::filesystem::create_directory(path);
    EXPECT_THAT(readServiceSettings(path).faultOf("location"), HasSubstr("services.json can't be read: "));
}

} // namespace
} // namespace bridge
