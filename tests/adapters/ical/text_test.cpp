#include "tests/adapters/ical/calendar_text.h"

#include "base/json_value.h"
#include "base/text.h"
#include "tests/support/public_data.h"
#include "tests/support/time_zone.h"

#include <gmock/gmock.h>

namespace bridge {

using testing::HasSubstr;

namespace {

// What comes back of a text that went through every field.
struct Texts {
    std::optional<std::string> title, location, notes;
};

Texts roundTrip(const std::string& text) {
    CalendarEvent event;
    event.startDate = at("2026-08-14T07:00:00Z");
    event.endDate = at("2026-08-14T08:00:00Z");
    event.title = event.location = event.notes = text;
    const auto written = CalendarObject::create(event, now).text();
    const auto object = CalendarObject::parse(written);
    const auto read = object.describe(object.occurrence("").value());
    EXPECT_EQ(object.text(), written);
    EXPECT_EQ(read.startDate, event.startDate);
    return {read.title, read.location, read.notes};
}

void expectKept(const std::string& text) {
    const auto texts = roundTrip(text);
    EXPECT_EQ(texts.title, text);
    EXPECT_EQ(texts.location, text);
    EXPECT_EQ(texts.notes, text);
}

// As iCalendar can hold it: see setText().
std::string holdable(const std::string& text) {
    std::string kept;
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= 0x20 ? c != 0x7f : c == '\n' || c == '\t') kept += c;
    return kept;
}

std::string repeated(std::string_view text, size_t count) {
    std::string all;
    for (size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

} // namespace

TEST(EventText, IsKeptWhateverItMeansToICalendar) {
    for (const char* text : {"a,b;c\\d",   "\\n",
                             "\\\\n",      "\n\n",
                             "END:VEVENT", "a\nEND:VEVENT\nBEGIN:VEVENT",
                             "\"quoted\"", "a:b",
                             "  spaces  ", "\ttabs\t",
                             " ",          "line\n folded",
                             "x\\",        "^n^'^^",
                             "%00",        "🌾🧑‍🌾",
                             "שלום עולם",  "\u202Eevil",
                             "e\u0301",    "\u2028"})
        expectKept(text);
}

TEST(EventText, IsKeptWhenItIsLong) {
    expectKept(std::string(10'000, 'x'));
    expectKept(repeated("Grüße 🌾 ", 2'000));
    expectKept(repeated("1 MB, in lines;\n", 65'536));
    // Each length once, so that the fold comes at every byte of a character.
    for (size_t length = 50; length < 90; ++length)
        expectKept(std::string(length, 'x') + repeated("🌾", 40));
}

TEST(EventText, IsFoldedToShortLines) {
    CalendarEvent event;
    event.title = repeated("🌾", 100);
    const auto text = CalendarObject::create(event, now).text();
    size_t start = 0;
    for (size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", start)) {
        EXPECT_LE(end - start, 76U);
        EXPECT_TRUE(isUTF8(text.substr(start, end - start)));
        start = end + 2;
    }
}

TEST(EventText, LeavesOutWhatNoTextCanHold) {
    using namespace std::string_literals;
    EXPECT_EQ(roundTrip("a\0b\x01\x02\x03\x04\x05\x1b\x7f"s + "c").title, "abc");
    EXPECT_EQ(roundTrip("a\r\nb\rc").notes, "a\nb\nc");
    EXPECT_EQ(roundTrip("a\xff"
                        "b")
                  .title,
              "a\uFFFD"
              "b");
    EXPECT_EQ(roundTrip("").title, std::nullopt);
    EXPECT_EQ(roundTrip("\0\0"s).title, std::nullopt);
}

TEST(EventText, KeepsNaughtyStrings) {
    REQUIRE_PUBLIC_DATA("text");
    const auto strings = parseJSON(readFile(publicData("text") / "blns.json"));
    size_t count = 0;
    for (const auto& string : *strings.array()) {
        const auto text = holdable(std::get<std::string>(string.value));
        if (text.empty()) continue;
        expectKept(text);
        ++count;
    }
    EXPECT_GT(count, 400U);
}

TEST(EventText, OfAnotherProgramStaysAsItIs) {
    for (const char* line :
         {"X-LIST:a\\,b\\;c\\nd\\\\,e", "X-RAW:a,b;c:d", "X-SPACE:  a  ", "x-lower-case;PARAM=a:b", "CATEGORIES:A\\,B",
          "RESOURCES:one\\;two", "STYLED-DESCRIPTION;VALUE=TEXT:<b>1\\,2</b>",
          "LINK;VALUE=URI;LINKREL=SOURCE:https://example.com",
          "ATTENDEE;CN=\"A, B\";ROLE=X-FARMER:mailto:a@example.org", "GEO:37.386013;-122.082932", "STATUS:X-UNHEARD-OF",
          "ATTACH;VALUE=BINARY;FMTTYPE=text/plain;ENCODING=BASE64:AAAA", "COMMENT;LANGUAGE=de:Grüße",
          "CONFERENCE;VALUE=URI;FEATURE=PHONE:tel:+1", "COLOR:tomato", "TRANSP:TRANSPARENT", "CLASS:PRIVATE"}) {
        const auto text = CalendarObject::parse(vcalendar(vevent({"DTSTART:20260814T070000Z", line}))).text();
        EXPECT_THAT(text, HasSubstr(std::string("\r\n") + line + "\r\n"));
        EXPECT_EQ(CalendarObject::parse(text).text(), text);
    }
}

TEST(EventText, KeepsEscapesThatThereAreNot) {
    const std::string given = R"(one \é two \" three \tab \: end\)";
    const auto object =
        CalendarObject::parse("BEGIN:VEVENT\nUID:1\nDTSTART:20260814T090000Z\nSUMMARY:" + given + "\nEND:VEVENT\n");
    EXPECT_EQ(object.describe(object.occurrence("").value()).title, given);
    EXPECT_THAT(object.text(), HasSubstr("SUMMARY:" + given + "\r\n"));
}

TEST(EventText, KeepsLinesThatBreakTheGrammar) {
    for (const char* line : {"X-PLAN;:a", "NO COLON", "SUM MARY:a", "X-A;B=\"c:d", "X-A;B=c\"d\":e",
                             ";;:", "X-A;B=^n^^^x:y", "UID;=x:\\;\\é,\\", "X-\\n"}) {
        const auto object = CalendarObject::parse(std::string("BEGIN:VEVENT\nUID:1\nDTSTART:20260814T090000Z\n") +
                                                  line + "\nSUMMARY:Sowing\nEND:VEVENT\n");
        const auto text = object.text();
        EXPECT_THAT(text, HasSubstr(std::string("\r\n") + line + "\r\n"));
        EXPECT_EQ(CalendarObject::parse(text).text(), text) << line;
        EXPECT_EQ(object.describe(object.occurrence("").value()).title, "Sowing") << line;
    }
}

TEST(EventText, OfAURLIsKept) {
    CalendarEvent event;
    event.url = "https://example.org/a;b,c?d=\"e\"&f=\\g#ü";
    const auto object = CalendarObject::parse(CalendarObject::create(event, now).text());
    EXPECT_EQ(object.describe(object.occurrence("").value()).url, event.url);
}

TEST(EventText, ThatIsNoCalendarIsRefused) {
    for (const std::string text :
         {"", "x", "BEGIN:VCALENDAR", "BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n", "BEGIN:VCARD\r\nFN:Ada\r\nEND:VCARD\r\n",
          "END:VEVENT", "BEGIN:\r\nEND:\r\n", "BEGIN:VTIMEZONE\r\nTZID:x\r\nEND:VTIMEZONE\r\n"})
        EXPECT_THROW(CalendarObject::parse(text), PlatformError) << text;
    EXPECT_THROW(CalendarObject::parse(repeated("BEGIN:VEVENT\r\n", 100'000)), PlatformError);
    EXPECT_THROW(CalendarObject::parse(vcalendar(vevent({}) + vtodo({}))), PlatformError);
    EXPECT_THROW(CalendarObject::parse(vcalendar(vevent({}) + vevent({}))), PlatformError);
}

TEST(EventText, OfAnEventAloneIsTaken) {
    EXPECT_EQ(CalendarObject::parse(vevent({"DTSTART:20260814T070000Z"})).uid(), "sowing@example.org");
    EXPECT_FALSE(CalendarObject::parse("BEGIN:VEVENT\nDTSTART:20260814T070000Z\nEND:VEVENT").uid().empty());
}

} // namespace bridge
