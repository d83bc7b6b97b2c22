#include "options.h"

#include "platform/privacy_service_names.h"

#include <algorithm>

namespace bridge::playground {

const char* const usage = R"(./try            run the bridge on sample data, tour its operations, print what came back
./try --serve    the same without the tour: print one line of JSON when ready, serve until SIGTERM

  --profile DIR                           keep everything below DIR between runs (default: a throw-away folder)
  --capabilities all|none|keep|NAME,NAME  what is switched on (default: all; keep: what DIR has stored)
  --calendars all|none|keep               which calendars are authorized (default: all)
  --reminder-lists all|none|keep          which reminder lists are authorized (default: all)
  --permission SERVICE=STATE              calendar, reminders, contacts, music or location, and one of notDetermined,
                                          denied, restricted, writeOnly, limited, fullAccess, unavailable, unknown, as far as
                                          the service has such a state; may be repeated (default: fullAccess)
  --import FILE                           take the calendars of an iCalendar file too, or the contacts of a vCard file;
                                          may be repeated
  --unpaired                              leave the bridge without a credential
)";

namespace {

std::string folderNamed(const std::string& word) {
    if (word.empty()) throw UsageError("--profile takes the name of a folder.");
    return word;
}

Choice readChoice(const std::string& option, const std::string& word) {
    if (word == "all") return {Choice::Kind::all, {}};
    if (word == "none") return {Choice::Kind::none, {}};
    if (word == "keep") return {Choice::Kind::keep, {}};
    throw UsageError(option + " takes all, none or keep, not \"" + word + "\".");
}

Choice readCapabilities(const std::string& word) {
    if (word == "all" || word == "none" || word == "keep") return readChoice("--capabilities", word);
    Choice choice{Choice::Kind::named, {}};
    for (size_t start = 0; start <= word.size();) {
        const auto end = std::min(word.find(',', start), word.size());
        choice.names.push_back(word.substr(start, end - start));
        if (!fromRawValue<BridgeCapability>(choice.names.back()))
            throw UsageError("\"" + choice.names.back() + "\" is no capability; they are called such as files.list.");
        start = end + 1;
    }
    return choice;
}

const PrivacyServiceNames& readService(const std::string& name) {
    const auto* const found = std::ranges::find(privacyServices, name, &PrivacyServiceNames::name);
    if (found == privacyServices.end())
        throw UsageError("\"" + name + "\" is no service; they are calendar, reminders, contacts, music and location.");
    return *found;
}

// The number that this state is made from.
std::optional<int> statusOf(const PrivacyServiceNames& service, BridgePermissionState state) {
    constexpr int nothingKnown = 99;
    if (state == BridgePermissionState::unavailable) return std::nullopt;
    for (const int status : {0, 1, 2, 3, 4, nothingKnown})
        if (mapStatus(service.service, status) == state) return status;
    throw UsageError("The permission of " + std::string(service.name) + " is never \"" + std::string(wireName(state)) +
                     "\".");
}

void addPermission(Options& options, const std::string& word) {
    const auto equals = word.find('=');
    if (equals == std::string::npos) throw UsageError("--permission takes SERVICE=STATE, not \"" + word + "\".");
    const auto& service = readService(word.substr(0, equals));
    const auto state = fromWireName(word.substr(equals + 1), std::type_identity<BridgePermissionState>());
    if (!state) throw UsageError("\"" + word.substr(equals + 1) + "\" is no permission state.");
    options.permissions[service.service] = statusOf(service, *state);
}

} // namespace

Options readOptions(const std::vector<std::string>& words) {
    Options options;
    for (const auto& service : privacyServices)
        options.permissions[service.service] = statusOf(service, BridgePermissionState::fullAccess);
    for (size_t index = 0; index < words.size(); ++index) {
        const auto& word = words[index];
        const auto value = [&]() -> const std::string& {
            if (++index == words.size()) throw UsageError(word + " needs a value.");
            return words[index];
        };
        if (word == "--help" || word == "-h")
            options.help = true;
        else if (word == "--serve")
            options.serve = true;
        else if (word == "--unpaired")
            options.unpaired = true;
        else if (word == "--profile")
            options.profile = folderNamed(value());
        else if (word == "--capabilities")
            options.capabilities = readCapabilities(value());
        else if (word == "--calendars")
            options.calendars = readChoice(word, value());
        else if (word == "--reminder-lists")
            options.reminderLists = readChoice(word, value());
        else if (word == "--import")
            options.imports.push_back(value());
        else if (word == "--permission")
            addPermission(options, value());
        else
            throw UsageError("There is no option \"" + word + "\".");
    }
    return options;
}

} // namespace bridge::playground
