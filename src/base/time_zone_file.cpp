#include "base/time_zone_file.h"

#include "base/file_descriptor.h"
#include "base/time_zone_rule.h"

#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <unicode/basictz.h>
#include <unicode/tztrans.h>

namespace bridge {

namespace {

constexpr const char* folder = "/usr/share/zoneinfo";

int yearOf(int64_t moment) {
    using namespace std::chrono;
    return int(year_month_day(floor<days>(sys_seconds(seconds(moment)))).year());
}

int64_t newYear(int year) {
    using namespace std::chrono;
    return int64_t{sys_days(std::chrono::year(year) / January / 1).time_since_epoch().count()} * 86400;
}

class Reader {
public:
    explicit Reader(std::string_view content) : m_rest(content) {}

    std::optional<std::string_view> take(size_t count) {
        if (m_rest.size() < count) return std::nullopt;
        const auto taken = m_rest.substr(0, count);
        m_rest.remove_prefix(count);
        return taken;
    }
    std::string_view rest() const { return m_rest; }

private:
    std::string_view m_rest;
};

int64_t bigEndian(std::string_view bytes) {
    uint64_t value = (static_cast<unsigned char>(bytes.front()) & 0x80) != 0 ? ~uint64_t{0} : 0;
    for (const char byte : bytes)
        value = value << 8 | static_cast<unsigned char>(byte);
    return static_cast<int64_t>(value);
}

struct Header {
    char version = 0;
    size_t utcCount = 0, standardCount = 0, leapCount = 0, timeCount = 0, typeCount = 0, nameLength = 0;

    static std::optional<Header> read(Reader& reader) {
        const auto bytes = reader.take(44);
        if (!bytes || !bytes->starts_with("TZif")) return std::nullopt;
        Header header;
        header.version = (*bytes)[4];
        size_t* const counts[]{&header.utcCount,  &header.standardCount, &header.leapCount,
                               &header.timeCount, &header.typeCount,     &header.nameLength};
        size_t at = 20;
        for (size_t* count : counts) {
            const int64_t value = bigEndian(bytes->substr(at, 4));
            if (value < 0 || value > 100'000) return std::nullopt;
            *count = static_cast<size_t>(value);
            at += 4;
        }
        return header;
    }
    size_t bodyLength(size_t timeLength) const {
        return timeCount * (timeLength + 1) + typeCount * 6 + nameLength + leapCount * (timeLength + 4) +
               standardCount + utcCount;
    }
};

// Writes out what the rule says until the calendar repeats.
std::shared_ptr<const TimeZone> withRule(int initialOffset, std::vector<TimeZone::Transition> transitions,
                                         std::string_view footer) {
    const auto rule = TimeZoneRule::parse(footer);
    if (!rule) return std::make_shared<const TimeZone>(initialOffset, std::move(transitions));
    if (!rule->changes()) {
        if (transitions.empty()) initialOffset = rule->standardOffset();
        return std::make_shared<const TimeZone>(initialOffset, std::move(transitions));
    }
    const int64_t last = transitions.empty() ? newYear(1900) : transitions.back().moment;
    const int first = yearOf(last);
    for (int year = first; year <= first + 402; ++year)
        for (const auto& transition : rule->transitions(year))
            if (transition.moment > last) transitions.push_back(transition);
    return std::make_shared<const TimeZone>(initialOffset, std::move(transitions), newYear(first + 1));
}

std::string readSmallFile(const std::string& path) {
    // Names can also lead to what is no file of data; opening a pipe would wait for its writer.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > 1'000'000) return {};
    std::string content(static_cast<size_t>(status.st_size), '\0');
    size_t length = 0;
    while (length < content.size()) {
        const ssize_t count = ::read(file.get(), content.data() + length, content.size() - length);
        if (count <= 0) return {};
        length += static_cast<size_t>(count);
    }
    return content;
}

std::shared_ptr<const TimeZone> fromICU(const std::string& name) {
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
    const auto* rules = dynamic_cast<const icu::BasicTimeZone*>(zone.get());
    if (!rules || *zone == icu::TimeZone::getUnknown()) return nullptr;
    constexpr int lastYear = 2450;
    const double earliest = static_cast<double>(newYear(1800)) * 1000;
    int32_t raw = 0;
    int32_t daylight = 0;
    UErrorCode code = U_ZERO_ERROR;
    rules->getOffset(earliest, false, raw, daylight, code);
    const int initial = (raw + daylight) / 1000;
    std::vector<TimeZone::Transition> transitions;
    icu::TimeZoneTransition next;
    for (double base = earliest; rules->getNextTransition(base, false, next); base = next.getTime()) {
        if (next.getTime() > static_cast<double>(newYear(lastYear + 1)) * 1000) break;
        const auto* rule = next.getTo();
        transitions.push_back(
            {static_cast<int64_t>(next.getTime() / 1000), (rule->getRawOffset() + rule->getDSTSavings()) / 1000});
    }
    return std::make_shared<const TimeZone>(initial, std::move(transitions), newYear(lastYear - 400));
}

} // namespace

bool isTimeZoneName(std::string_view name) {
    if (name.empty() || name.size() > 100 || name.front() == '/' || name.back() == '/') return false;
    // The same zones with leap seconds counted, which nothing else here does.
    if (name.starts_with("right/")) return false;
    return name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_+-/") ==
           std::string_view::npos;
}

std::shared_ptr<const TimeZone> parseTimeZoneFile(std::string_view content) {
    Reader reader(content);
    auto header = Header::read(reader);
    if (!header) return nullptr;
    size_t timeLength = 4;
    if (header->version >= '2') {
        // What follows is the same again with longer times.
        if (!reader.take(header->bodyLength(timeLength))) return nullptr;
        header = Header::read(reader);
        if (!header) return nullptr;
        timeLength = 8;
    }
    const auto times = reader.take(header->timeCount * timeLength);
    const auto indices = reader.take(header->timeCount);
    const auto types = reader.take(header->typeCount * 6);
    const auto others = reader.take(header->nameLength + header->leapCount * (timeLength + 4) + header->standardCount +
                                    header->utcCount);
    if (!times || !indices || !types || !others || header->typeCount == 0 || header->leapCount > 0) return nullptr;

    const auto offset = [&](size_t type) { return static_cast<int>(bigEndian(types->substr(type * 6, 4))); };
    std::vector<TimeZone::Transition> transitions;
    for (size_t i = 0; i < header->timeCount; ++i) {
        const size_t type = static_cast<unsigned char>((*indices)[i]);
        if (type >= header->typeCount) return nullptr;
        transitions.push_back({bigEndian(times->substr(i * timeLength, timeLength)), offset(type)});
    }
    std::string_view footer = reader.rest();
    if (footer.size() < 2 || footer.front() != '\n' || footer.back() != '\n')
        return std::make_shared<const TimeZone>(offset(0), std::move(transitions));
    return withRule(offset(0), std::move(transitions), footer.substr(1, footer.size() - 2));
}

std::shared_ptr<const TimeZone> readTimeZone(const std::string& name) {
    if (::access(folder, X_OK) != 0) return fromICU(name);
    return parseTimeZoneFile(readSmallFile(std::string(folder) + "/" + name));
}

} // namespace bridge
