#include "adapters/jsonfile/json_file_user_defaults.h"

#include "base/json_writer.h"
#include "base/platform_error.h"
#include "tests/contracts/user_defaults_contract.h"
#include "tests/support/public_data.h"
#include "tests/support/temporary_folder.h"

#include <sys/stat.h>

namespace bridge {
namespace {

struct JSONFileSite : UserDefaultsSite {
    TemporaryFolder folder;
    std::unique_ptr<UserDefaults> start() override {
        return std::make_unique<JSONFileUserDefaults>(folder.file("defaults.json"));
    }
};

const UserDefaultsKind jsonFile{"JSONFile", [] { return std::make_unique<JSONFileSite>(); }};
INSTANTIATE_TEST_SUITE_P(Adapters, UserDefaultsContract, testing::Values(jsonFile), nameOf);

mode_t permissions(const std::filesystem::path& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

void write(const std::filesystem::path& path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
}

class JSONFileUserDefaultsTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string path = folder.file("defaults.json");
};

TEST_F(JSONFileUserDefaultsTest, IsOneReadableObject) {
    JSONFileUserDefaults defaults(path);
    defaults.setString("agentPairing.serverURL", "http://localhost:1");
    defaults.setStrings("appleBridge.enabledCapabilities.v1", {"files.list"});
    defaults.setData("authorizedFileRoots.v1", "[]");
    EXPECT_EQ(readFile(path),
              R"({"agentPairing.serverURL":"http://localhost:1",)"
              R"("appleBridge.enabledCapabilities.v1":["files.list"],"authorizedFileRoots.v1":"W10="})");
}

TEST_F(JSONFileUserDefaultsTest, MakesFoldersAndFileForTheUserAlone) {
    const auto deep = folder.file("a/b/defaults.json");
    const auto former = umask(0);
    JSONFileUserDefaults(deep).setString("key", "value");
    umask(former);
    EXPECT_EQ(permissions(folder.file("a")), 0700U);
    EXPECT_EQ(permissions(folder.file("a/b")), 0700U);
    EXPECT_EQ(permissions(deep), 0600U);
}

TEST_F(JSONFileUserDefaultsTest, ReadingMakesNoFile) {
    EXPECT_FALSE(JSONFileUserDefaults(folder.file("a/defaults.json")).contains("key"));
    EXPECT_FALSE(std::filesystem::exists(folder.file("a")));
}

TEST_F(JSONFileUserDefaultsTest, ClosesAFileThatOthersCouldRead) {
    write(path, "{}");
    chmod(path.c_str(), 0644);
    JSONFileUserDefaults(path).setString("key", "value");
    EXPECT_EQ(permissions(path), 0600U);
}

TEST_F(JSONFileUserDefaultsTest, KeepsValuesItHasNoUseFor) {
    write(path, R"({"number":1.5,"object":{"a":[1,true,null]},"mixed":["a",1]})");
    JSONFileUserDefaults defaults(path);
    EXPECT_TRUE(defaults.contains("number"));
    EXPECT_EQ(defaults.string("number"), std::nullopt);
    EXPECT_EQ(defaults.strings("mixed"), std::nullopt);
    EXPECT_EQ(defaults.data("object"), std::nullopt);
    defaults.setString("key", "value");
    EXPECT_EQ(parseJSON(readFile(path)),
              parseJSON(R"({"number":1.5,"object":{"a":[1,true,null]},"mixed":["a",1],"key":"value"})"));
}

TEST_F(JSONFileUserDefaultsTest, SetsADamagedFileAsideAndBeginsEmpty) {
    for (const std::string damaged : {"", "{\"key\":\"val", "[]", "\"text\"", "\xff\xfe{}", "{} {}"}) {
        const TemporaryFolder place;
        const auto file = place.file("defaults.json");
        write(file, damaged);
        JSONFileUserDefaults defaults(file);
        EXPECT_FALSE(defaults.contains("key"));
        EXPECT_FALSE(std::filesystem::exists(file));
        EXPECT_EQ(readFile(file + ".damaged-1"), damaged);
        defaults.setString("key", "value");
        EXPECT_EQ(JSONFileUserDefaults(file).string("key"), "value");
    }
}

TEST_F(JSONFileUserDefaultsTest, NeverOverwritesWhatWasSetAsideBefore) {
    for (const auto* damaged : {"first", "second", "third"}) {
        write(path, damaged);
        const JSONFileUserDefaults defaults(path);
    }
    EXPECT_EQ(readFile(path + ".damaged-1"), "first");
    EXPECT_EQ(readFile(path + ".damaged-2"), "second");
    EXPECT_EQ(readFile(path + ".damaged-3"), "third");
}

TEST_F(JSONFileUserDefaultsTest, DoesNotOpenOverAFileItCanNotRead) {
    std::filesystem::create_directory(path);
    EXPECT_THROW(JSONFileUserDefaults{path}, PlatformError);
    EXPECT_TRUE(std::filesystem::is_directory(path));

    write(folder.file("file"), "");
    EXPECT_THROW(JSONFileUserDefaults{folder.file("file/defaults.json")}, PlatformError);
}

TEST_F(JSONFileUserDefaultsTest, APipeInTheFilesPlaceDoesNotHang) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_THROW(JSONFileUserDefaults{path}, PlatformError);
}

TEST_F(JSONFileUserDefaultsTest, DoesNotOpenOverAFileItMayNotRead) {
    if (geteuid() == 0) GTEST_SKIP() << "root may read every file";
    write(path, "{}");
    chmod(path.c_str(), 0);
    EXPECT_THROW(JSONFileUserDefaults{path}, PlatformError);
}

TEST_F(JSONFileUserDefaultsTest, AFailedSaveKeepsTheValueForTheNextOne) {
    const auto place = folder.file("place");
    JSONFileUserDefaults defaults(place + "/defaults.json");
    defaults.setString("before", "1");
    std::filesystem::rename(place, folder.file("away"));
    write(place, "a file where the folder was");
    defaults.setString("meanwhile", "2");
    EXPECT_EQ(defaults.string("meanwhile"), "2");
    EXPECT_NE(defaults.savingFailure.get().value_or("").find(place + "/defaults.json"), std::string::npos);

    std::filesystem::remove(place);
    std::filesystem::rename(folder.file("away"), place);
    EXPECT_EQ(JSONFileUserDefaults(place + "/defaults.json").string("meanwhile"), std::nullopt);
    defaults.setString("after", "3");
    const JSONFileUserDefaults reopened(place + "/defaults.json");
    EXPECT_EQ(reopened.string("before"), "1");
    EXPECT_EQ(reopened.string("meanwhile"), "2");
    EXPECT_EQ(reopened.string("after"), "3");
    EXPECT_EQ(defaults.savingFailure.get(), std::nullopt);
}

TEST_F(JSONFileUserDefaultsTest, SavesAgainWhatCouldNotBeSavedAndOnlyThat) {
    std::filesystem::create_directory(folder / "away");
    JSONFileUserDefaults defaults(path);
    std::filesystem::rename(folder / "away", path);
    defaults.setString("key", "value");
    defaults.saveAgain();
    EXPECT_TRUE(defaults.savingFailure.get());
    std::filesystem::remove(path);
    defaults.saveAgain();
    EXPECT_EQ(defaults.savingFailure.get(), std::nullopt);
    EXPECT_EQ(JSONFileUserDefaults(path).string("key"), "value");

    std::filesystem::remove(path);
    defaults.saveAgain();
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(JSONFileUserDefaultsTest, LeavesNoOtherFileBehind) {
    JSONFileUserDefaults defaults(path);
    for (int index = 0; index < 5; ++index)
        defaults.setString("key", std::to_string(index));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

} // namespace
} // namespace bridge
