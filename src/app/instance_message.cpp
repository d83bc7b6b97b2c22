#include "app/instance_message.h"

#include <array>
#include <utility>

namespace bridge {

namespace {

template <typename Value> using Word = std::pair<Value, std::string_view>;

constexpr std::array<Word<InstanceWish>, 3> wishes{
    {{InstanceWish::nothing, "nothing"}, {InstanceWish::showDashboard, "show"}, {InstanceWish::giveWay, "give-way"}}};
constexpr std::array<Word<InstanceAnswer>, 2> answers{
    {{InstanceAnswer::done, "done"}, {InstanceAnswer::noDisplay, "no-display"}}};

template <typename Words, typename Value> std::string wordFor(const Words& words, Value value) {
    for (const auto& [known, word] : words)
        if (known == value) return std::string(word);
    return {};
}

template <typename Words> auto meaningOf(const Words& words, std::string_view text) {
    std::optional<typename Words::value_type::first_type> meaning;
    for (const auto& [value, word] : words)
        if (word == text) meaning = value;
    return meaning;
}

} // namespace

std::string encode(const InstanceMessage& message) {
    // A token is a word of the desktop's; one that would break the line is none.
    const bool isWord = message.activationToken.find_first_of(" \n") == std::string::npos;
    return wordFor(wishes, message.wish) + ' ' + (isWord ? message.activationToken : std::string()) + '\n';
}

std::optional<InstanceMessage> decodeInstanceMessage(std::string_view line) {
    const auto end = line.find(' ');
    const auto wish = meaningOf(wishes, line.substr(0, end));
    if (!wish) return std::nullopt;
    return InstanceMessage{*wish, std::string(end == line.npos ? "" : line.substr(end + 1))};
}

std::string encode(InstanceAnswer answer) {
    return wordFor(answers, answer) + '\n';
}

std::optional<InstanceAnswer> decodeInstanceAnswer(std::string_view line) {
    return meaningOf(answers, line);
}

} // namespace bridge
