#include "tests/playground/playground_process.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace bridge {
namespace {

using Words = std::vector<std::string>;

bool isSentence(const std::string& line) {
    return line.size() > 10 && line.back() == '.' && line.find('\n') == std::string::npos;
}

TEST(Refusals, OfWordsComeWithTheHelp) {
    const Words refused[] = {{"--server"},
                             {"serve"},
                             {""},
                             {"--profile"},
                             {"--capabilities"},
                             {"--capabilities", "files.lists"},
                             {"--capabilities", ""},
                             {"--capabilities", "files.list,"},
                             {"--capabilities", "all,files.list"},
                             {"--calendars", "some"},
                             {"--reminder-lists", "x"},
                             {"--permission", "calendar"},
                             {"--permission", "weather=denied"},
                             {"--permission", "calendar=Denied"},
                             {"--serve", "--unpaired", "--verbose"}};
    const TemporaryFolder temporary;
    const auto help = runPlayground(temporary, {"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.errors, "");
    for (const auto& words : refused) {
        const auto ended = runPlayground(temporary, words);
        EXPECT_EQ(ended.status, 2) << testing::PrintToString(words);
        EXPECT_EQ(ended.output, "");
        const auto sentence = ended.errors.substr(0, ended.errors.find('\n'));
        EXPECT_TRUE(isSentence(sentence)) << sentence;
        EXPECT_EQ(ended.errors, sentence + "\n\n" + help.output);
    }
    EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
}

TEST(Refusals, OfStatesThatAServiceNeverHas) {
    const TemporaryFolder temporary;
    const auto profile = temporary.file("kept");
    for (const auto* word : {"calendar=limited", "reminders=limited", "contacts=writeOnly", "music=writeOnly",
                             "music=limited", "location=writeOnly", "location=limited"}) {
        const auto ended = runPlayground(temporary, {"--serve", "--profile", profile, "--permission", word});
        EXPECT_EQ(ended.status, 2) << word;
        EXPECT_EQ(ended.output, "");
        const std::string_view said(word);
        const auto equals = said.find('=');
        EXPECT_TRUE(ended.errors.starts_with("The permission of " + std::string(said.substr(0, equals)) +
                                             " is never \"" + std::string(said.substr(equals + 1)) + "\".\n"))
            << ended.errors;
        EXPECT_FALSE(std::filesystem::exists(profile));
    }
}

TEST(Refusals, OfAPortInUse) {
    FileDescriptor other(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const int on = 1;
    setsockopt(other.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(32123);
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(bind(other.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
    ASSERT_EQ(listen(other.get(), 1), 0);

    const TemporaryFolder temporary;
    for (const auto& words : {Words{"--serve"}, Words{}}) {
        const auto ended = runPlayground(temporary, words);
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.output, "");
        EXPECT_EQ(ended.errors, "The bridge could not be tried: 127.0.0.1:32123: address already in use\n");
    }
    EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
}

TEST(Refusals, OfASecondPlaygroundLeaveTheFirstAlone) {
    const TemporaryFolder temporary;
    const ServingPlayground first(temporary);
    EXPECT_EQ(runPlayground(temporary, {"--serve"}).status, 1);
    EXPECT_EQ(first.health().status, 200);
}

} // namespace
} // namespace bridge
