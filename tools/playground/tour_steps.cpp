#include "tour_steps.h"

namespace bridge::playground {

namespace {

constexpr Step steps[] = {
    {"permissions.get"},
    {"files.roots.list"},
    {"files.list", R"({"rootID":"$root","path":""})"},
    {"files.read_text", R"({"rootID":"$root","path":"Shopping list.md"})"},
    {"files.create_directory", R"({"rootID":"$root","path":"Letters/2026"})"},
    {"files.write_text",
     R"({"rootID":"$root","path":"Letters/2026/To Ada.txt","content":"Dear Ada,\n","overwrite":false})"},
    {"files.write_text", R"({"rootID":"$root","path":"Letters/2026/To Ada.txt","content":"","overwrite":false})", false,
     "operation_failed"},
    {"files.write_text", R"({"rootID":"$root","path":"Letters/2026/To Ada.txt","content":"","overwrite":true})", false,
     "confirmation_required"},
    {"files.write_text",
     R"({"rootID":"$root","path":"Letters/2026/To Ada.txt","content":"Dear Ada Lovelace,\n","overwrite":true})", true},
    {"files.move",
     R"({"rootID":"$root","sourcePath":"Letters/2026/To Ada.txt","destinationPath":"Letters/Ada.txt","overwrite":false})"},
    {"files.delete", R"({"rootID":"$root","path":"Letters/Ada.txt"})", false, "confirmation_required"},
    {"files.delete", R"({"rootID":"$root","path":"Letters/Ada.txt"})", true},
    {"files.read_text", R"({"rootID":"$root","path":"../outside.txt"})", false, "unsafe_path"},
    {"calendar.list"},
    {"calendar.sources.list"},
    {"calendar.events.search", R"({"startDate":"$today","endDate":"$nextWeek","calendarIDs":[]})"},
    {"calendar.events.search", R"({"startDate":"$nextWeek","endDate":"$today","calendarIDs":[]})", false,
     "invalid_date_range"},
    {"calendar.create", R"({"title":"Garden"})", false, "", "calendar"},
    {"calendar.update", R"({"identifier":"$calendar","title":"Garden and allotment"})"},
    {"calendar.events.create",
     R"({"calendarID":"$calendar","title":"Sowing","startDate":"$tomorrow","endDate":"$anHourLater","isAllDay":false,)"
     R"("location":"Bed 4","alarmOffsetSeconds":-900})",
     false, "", "event"},
    {"calendar.events.update", R"({"identifier":"$event","title":"Sowing chard","notes":"Two rows."})"},
    {"calendar.events.search",
     R"({"startDate":"$today","endDate":"$nextWeek","calendarIDs":["$calendar"],"limit":10})"},
    {"calendar.events.delete", R"({"identifier":"$event"})", false, "confirmation_required"},
    {"calendar.events.delete", R"({"identifier":"$event"})", true},
    {"calendar.events.update", R"({"identifier":"$event","title":"Gone"})", false, "event_not_found"},
    {"calendar.delete", R"({"identifier":"$calendar"})", true},
    {"reminders.lists.list"},
    {"reminders.sources.list"},
    {"reminders.search", R"({"listIDs":[],"isCompleted":false,"dueBefore":"$nextWeek"})"},
    {"reminders.lists.create", R"({"title":"Seeds"})", false, "", "list"},
    {"reminders.lists.update", R"({"identifier":"$list","title":"Seeds to buy"})"},
    {"reminders.create", R"({"listID":"$list","title":"Chard","dueDate":"$tomorrow","priority":1})", false, "",
     "reminder"},
    {"reminders.update", R"({"identifier":"$reminder","isCompleted":true})"},
    {"reminders.search", R"({"listIDs":["$list"],"query":"chard"})"},
    {"reminders.delete", R"({"identifier":"$reminder"})", false, "confirmation_required"},
    {"reminders.delete", R"({"identifier":"$reminder"})", true},
    {"reminders.lists.delete", R"({"identifier":"$list"})", true},
    {"contacts.search", R"({"limit":3})"},
    {"contacts.search", R"({"limit":10,"query":"jose"})"},
    {"contacts.search", R"({"limit":10,"query":"山"})"},
    {"contacts.groups.list", nullptr, false, "", "choir"},
    {"contacts.search", R"({"limit":10,"groupID":"$choir"})"},
    {"contacts.search", R"({"limit":10,"groupID":"$choir","query":"lindq"})"},
    {"contacts.create",
     R"({"givenName":"Ada","familyName":"Lovelace","phoneNumbers":["555-0100"],"emailAddresses":[],"birthday":{"year":1815,"month":12,"day":10}})",
     false, "", "contact"},
    {"contacts.search", R"({"limit":10,"query":"ada lo"})"},
    {"contacts.update", R"({"identifier":"$contact","nickname":"Countess"})"},
    {"contacts.groups.create", R"({"name":"Mathematics"})", false, "", "group"},
    {"contacts.groups.add_members", R"({"groupIdentifier":"$group","contactIdentifiers":["$contact"]})"},
    {"contacts.search", R"({"limit":10,"groupID":"$group"})"},
    {"contacts.groups.remove_members", R"({"groupIdentifier":"$group","contactIdentifiers":["$contact"]})"},
    {"contacts.groups.delete", R"({"identifier":"$group"})", true},
    {"contacts.delete", R"({"identifier":"$contact"})", false, "confirmation_required"},
    {"contacts.delete", R"({"identifier":"$contact"})", true},
    {"music.search", R"({"source":"library","limit":3})"},
    {"music.search", R"({"term":"wheelbarrow","source":"library","limit":3})", false, "", "song"},
    {"music.search", R"({"term":"CAFE","source":"library","limit":3})", false, "", "cafe"},
    {"music.search", R"({"term":"lefevre","source":"library","limit":3})"},
    {"music.search", R"({"term":"cafe","source":"catalog","limit":3})", false, "capability_unavailable"},
    {"music.playlists.create", R"({"name":"Digging","description":"For long afternoons","songIDs":["$song","$cafe"]})",
     false, "", "playlist"},
    {"music.playlists.add_songs", R"({"playlistID":"$playlist","songIDs":["$song"]})"},
    {"music.playlists.list", R"({"limit":5})"},
    {"music.play", R"({"identifier":"$cafe"})"},
    {"music.pause"},
    {"music.play", R"({"identifier":"no such song"})", false, "operation_failed"},
    {"music.playlists.delete", R"({"identifier":"$playlist"})", false, "confirmation_required"},
    {"music.playlists.delete", R"({"identifier":"$playlist"})", true},
    {"iwork.pages.create",
     R"({"rootID":"$root","path":"Spring fair/Invitation.pages","text":"Dear neighbours,\nbring a cake.\n"})"},
    {"iwork.pages.create", R"({"rootID":"$root","path":"Spring fair/Invitation.pages","text":""})", false,
     "operation_failed"},
    {"iwork.pages.read", R"({"rootID":"$root","path":"Spring fair/Invitation.pages"})"},
    {"iwork.numbers.create",
     R"({"rootID":"$root","path":"Spring fair/Budget.numbers",)"
     R"~("values":[["Item","Cost","Paid"],["Tent",120.5,true],["Cakes",38,null],["Total","=SUM(B2:B3)",null]]})~"},
    {"iwork.numbers.write_range",
     R"({"rootID":"$root","path":"Spring fair/Budget.numbers","range":"b3:c3","values":[[42,true]]})"},
    {"iwork.numbers.write_range",
     R"({"rootID":"$root","path":"Spring fair/Budget.numbers","range":"B3:C3","values":[[42]]})", false,
     "malformed_request"},
    {"iwork.numbers.read_range", R"({"rootID":"$root","path":"Spring fair/Budget.numbers","range":"A1:C4"})"},
    {"iwork.keynote.create", R"({"rootID":"$root","path":"Spring fair/Welcome.key",)"
                             R"("slides":[{"title":"Spring fair","body":"Saturday at three"},{"title":"Thank you"}]})"},
    {"iwork.export", R"({"application":"pages","rootID":"$root","inputPath":"Spring fair/Invitation.pages",)"
                     R"("outputPath":"Spring fair/Exports/Invitation.pdf","format":"pdf"})"},
    {"iwork.export", R"({"application":"pages","rootID":"$root","inputPath":"Spring fair/Invitation.pages",)"
                     R"("outputPath":"Spring fair/Exports/Invitation.docx","format":"docx"})"},
    {"iwork.export", R"({"application":"numbers","rootID":"$root","inputPath":"Spring fair/Budget.numbers",)"
                     R"("outputPath":"Spring fair/Exports/Budget.xlsx","format":"xlsx"})"},
    {"iwork.export", R"({"application":"numbers","rootID":"$root","inputPath":"Spring fair/Budget.numbers",)"
                     R"("outputPath":"Spring fair/Exports/Budget.csv","format":"csv"})"},
    {"iwork.export", R"({"application":"keynote","rootID":"$root","inputPath":"Spring fair/Welcome.key",)"
                     R"("outputPath":"Spring fair/Exports/Welcome.pptx","format":"pptx"})"},
    {"iwork.export", R"({"application":"keynote","rootID":"$root","inputPath":"Spring fair/Welcome.key",)"
                     R"("outputPath":"Spring fair/Exports/Welcome.mov","format":"movie"})"},
    {"iwork.export",
     R"({"application":"numbers","rootID":"$root","inputPath":"Spring fair/Budget.numbers",)"
     R"("outputPath":"Spring fair/Exports/Budget.docx","format":"docx"})",
     false, "malformed_request"},
    {"files.list", R"({"rootID":"$root","path":"Spring fair/Exports"})"},
    {"files.delete", R"({"rootID":"$root","path":"Spring fair"})", true},
    {"location.current"},
    {"maps.places.search", R"({"query":"Vaduz","limit":3})", false, "", nullptr, Needs::places},
    {"maps.places.search", R"({"query":"  schaan ","latitude":47.14,"longitude":9.52,"limit":1})", false, "", nullptr,
     Needs::places},
    {"maps.places.search", R"({"query":"東京","limit":1})", false, "", nullptr, Needs::places},
    {"maps.places.search", R"({"query":"Vaduz","latitude":47.14,"limit":3})", false, "malformed_request"},
    {"maps.places.search", R"({"query":" ","limit":3})", false, "malformed_request"},
    {"maps.directions",
     R"({"originLatitude":47.141,"originLongitude":9.5215,"destinationLatitude":47.0667,"destinationLongitude":9.502,)"
     R"("transport":"automobile"})",
     false, "", nullptr, Needs::directions},
    {"maps.directions",
     R"({"originLatitude":47.141,"originLongitude":9.5215,"destinationLatitude":47.0667,"destinationLongitude":9.502,)"
     R"("transport":"Walking"})",
     false, "", nullptr, Needs::directions},
    {"maps.directions",
     R"({"originLatitude":47.141,"originLongitude":9.5215,"destinationLatitude":47.0667,"destinationLongitude":9.502,)"
     R"("transport":"cycling"})",
     false, "", nullptr, Needs::directions},
    {"maps.directions",
     R"({"originLatitude":47.141,"originLongitude":9.5215,"destinationLatitude":47.0667,"destinationLongitude":9.502,)"
     R"("transport":"transit"})",
     false, "", nullptr, Needs::directions},
    {"maps.directions",
     R"({"originLatitude":47.141,"originLongitude":9.5215,"destinationLatitude":47.0667,"destinationLongitude":9.502,)"
     R"("transport":"bike"})",
     false, "malformed_request"},
    {"maps.directions",
     R"({"originLatitude":90.5,"originLongitude":9.52,"destinationLatitude":47.07,"destinationLongitude":9.5,)"
     R"("transport":"walking"})",
     false, "malformed_request"},
    // Into the sea.
    {"maps.directions",
     R"({"originLatitude":47.14,"originLongitude":9.52,"destinationLatitude":44,"destinationLongitude":8.5,)"
     R"("transport":"automobile"})",
     false, "internal_error"},
};

} // namespace

std::span<const Step> tourSteps() {
    return steps;
}

} // namespace bridge::playground
