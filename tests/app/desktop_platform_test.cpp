#include "app/process.h"
#include "base/log.h"
#include "tests/app/installation.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

// A user whose desktop has no service at all.
class Users : public testing::Test {
protected:
    Users() {
        prepareProcess();
        const FileDescriptor log(open(folder.file("log").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        m_log = FileDescriptor(dup(log.get()));
        log::writeTo(m_log.get());
        for (const auto* variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
            set(variable, folder.path());
        set("XDG_RUNTIME_DIR", folder.path());
        for (const auto* variable : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"})
            set(variable, "unix:path=" + folder.file("no bus"));
        std::filesystem::create_directory(folder / "brindlefox-apple-bridge");
    }
    ~Users() override {
        log::writeTo(STDERR_FILENO);
        for (const auto& [name, value] : m_before)
            value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }
    void wants(std::string_view services) { putFile(folder / "brindlefox-apple-bridge/services.json", services); }
    std::string said() const { return getFile(folder / "log"); }

    TemporaryFolder folder;
    EventLoop loop;

private:
    void set(const char* name, const std::string& value) {
        const char* before = getenv(name);
        m_before.emplace(name, before ? std::optional<std::string>(before) : std::nullopt);
        setenv(name, value.c_str(), 1);
    }

    FileDescriptor m_log;
    std::map<std::string, std::optional<std::string>> m_before;
};

size_t timesIn(const std::string& text, const std::string& part) {
    size_t times = 0;
    for (auto found = text.find(part); found != text.npos; found = text.find(part, found + 1))
        ++times;
    return times;
}

TEST_F(Users, ServicesHaveTheirFaultsToldOnce) {
    wants(R"({"loction": {"latitude": 1, "longitude": 2}, "placesServer": 5})");
    const auto platform = openDesktopPlatform(loop);
    EXPECT_EQ(timesIn(said(), "services.json, .loction: there is no such setting"), 1U) << said();
    EXPECT_EQ(timesIn(said(), "services.json, .placesServer: expected an address"), 1U) << said();
}

TEST_F(Users, PlaceIsTheLocationAndTheLogSaysSo) {
    wants(R"({"location": {"latitude": 1, "longitude": 2}})");
    const auto platform = openDesktopPlatform(loop);
    EXPECT_EQ(platform.locationManager->description(), "what " + userServicesFile() + " says");
    EXPECT_THAT(said(), testing::HasSubstr("The location comes from what " + userServicesFile() + " says."));
}

TEST_F(Users, ProfileIsUsedByOneBridge) {
    std::optional first = openDesktopPlatform(loop);
    try {
        const auto second = openDesktopPlatform(loop);
        FAIL() << "two bridges use one profile";
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.what(), "Another Brindlefox Apple Bridge is using " + userProfileFolder() + ". End it first.");
    }
    first.reset();
    EXPECT_TRUE(openDesktopPlatform(loop).profileLock);
}

TEST_F(Users, ProfileIsUsedAlsoWhereItIsTheInstanceFolder) {
    unsetenv("XDG_RUNTIME_DIR");
    const auto instances = instanceFolder(userProfileFolder());
    EXPECT_EQ(instances, userProfileFolder());
    const auto lock = InstanceLock::take(instances);
    EXPECT_TRUE(lock);
    EXPECT_TRUE(openDesktopPlatform(loop).profileLock);
}

TEST_F(Users, ProfileIsUsedAlsoWhereNothingCanBeLocked) {
    std::filesystem::create_directory(folder / "brindlefox-apple-bridge/in-use");
    EXPECT_FALSE(openDesktopPlatform(loop).profileLock);
    EXPECT_THAT(said(), testing::HasSubstr("Nothing keeps another bridge out of this profile. "));
}

} // namespace
} // namespace bridge
