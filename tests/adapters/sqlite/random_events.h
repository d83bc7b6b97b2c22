#pragma once

#include <chrono>
#include <fmt/format.h>
#include <random>
#include <string>

namespace bridge {

// Events of every kind of time and repetition, the same ones for the same seed.
class RandomEvents {
public:
    explicit RandomEvents(unsigned seed) : m_random(seed) {}

    int64_t below(int64_t bound) { return static_cast<int64_t>(m_random() % static_cast<uint64_t>(bound)); }

    // The lines of a VEVENT, and of exceptions to it, with this UID.
    std::string lines(const std::string& uid) {
        m_form = below(5);
        const int64_t start = aroundNow(below(2) == 0 ? 400 : 20'000);
        std::string text = head(uid, "event") + "DTSTART" + time(start) + duration();
        if (below(2) == 0) return text + "END:VEVENT\n";

        text += rule();
        const int64_t one = start + 86400 * 7 * below(4);
        if (below(3) == 0) text += "EXDATE" + time(one);
        if (below(3) == 0) text += "RDATE" + time(start + 86400 * below(900));
        text += "END:VEVENT\n";
        if (below(2) == 0) {
            const int64_t other = start + 86400 * 7 * (1 + below(4));
            text += head(uid, "exception") + "RECURRENCE-ID" + time(other);
            text += "DTSTART" + time(other + 3600 * below(24 * 400)) + duration() + "END:VEVENT\n";
        }
        return text;
    }

private:
    enum Form { day, floating, utc, lisbon, auckland };

    static std::string head(const std::string& uid, const char* title) {
        return "BEGIN:VEVENT\nUID:" + uid + "\nSUMMARY:" + title + "\n";
    }
    int64_t aroundNow(int64_t days) {
        return 1'786'700'000 / 300 * 300 + (below(2 * days) - days) * 86400 + below(288) * 300;
    }

    std::string time(int64_t seconds) {
        using namespace std::chrono;
        const sys_seconds moment{std::chrono::seconds(seconds)};
        const auto midnight = floor<days>(moment);
        const year_month_day date(midnight);
        const hh_mm_ss clock(moment - midnight);
        const auto text =
            fmt::format("{:04}{:02}{:02}", int(date.year()), unsigned(date.month()), unsigned(date.day()));
        const auto full = text + fmt::format("T{:02}{:02}{:02}", clock.hours().count(), clock.minutes().count(),
                                             clock.seconds().count());
        switch (m_form) {
        case day:
            return ";VALUE=DATE:" + text + "\n";
        case floating:
            return ":" + full + "\n";
        case utc:
            return ":" + full + "Z\n";
        case lisbon:
            return ";TZID=Europe/Lisbon:" + full + "\n";
        default:
            return ";TZID=Pacific/Auckland:" + full + "\n";
        }
    }
    std::string duration() {
        if (m_form == day) return fmt::format("DURATION:P{}D\n", 1 + (below(4) == 0 ? below(40) : 0));
        switch (below(5)) {
        case 0:
            return ""; // a moment
        case 1:
            return fmt::format("DURATION:P{}DT{}H\n", 1 + below(400), below(24));
        default:
            return fmt::format("DURATION:PT{}M\n", 15 * (1 + below(60)));
        }
    }
    std::string rule() {
        constexpr const char* rules[]{"FREQ=DAILY",
                                      "FREQ=DAILY;INTERVAL=3;COUNT=40",
                                      "FREQ=WEEKLY",
                                      "FREQ=WEEKLY;BYDAY=MO,TH;COUNT=300",
                                      "FREQ=MONTHLY;BYDAY=-1FR",
                                      "FREQ=MONTHLY;BYMONTHDAY=31",
                                      "FREQ=YEARLY",
                                      "FREQ=YEARLY;COUNT=2"};
        if (m_form != day && below(6) == 0) return "RRULE:FREQ=HOURLY;INTERVAL=5\n";
        return fmt::format("RRULE:{}\n", rules[below(std::size(rules))]);
    }

    std::mt19937_64 m_random;
    int64_t m_form = day;
};

} // namespace bridge
