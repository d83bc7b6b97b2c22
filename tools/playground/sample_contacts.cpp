#include "sample_contacts.h"

#include <stdexcept>

namespace bridge::playground {

namespace {

constexpr const char* samples = R"(BEGIN:VCARD
VERSION:4.0
UID:sample-ada
N:Whitcombe;Ada;;;
FN:Ada Whitcombe
NICKNAME:Addie
BDAY:19790417
TEL;TYPE=cell:+44 7700 900123
TEL;TYPE=home:+44 20 7946 0018
EMAIL;TYPE=home:ada@example.com
ADR;CC=GB:;;12 Mill Lane;London;;E1 6AN;United Kingdom
CATEGORIES:Choir
PHOTO:data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAABAAAAAQBAMAAADt3eJSAAA
 AD1BMVEXu8OtcOiHwyKo8KDxGglrPJX51AAAAQ0lEQVR42mNgQABBIADRjCCGAEhACQgUgQwhO
 EPZSNkIlQGTYgIxFMAMY2MwgwEkAjaZCSIDFoLQLkAAo0EsFgjDAQB9vguwB+QdegAAAABJRU5
 ErkJggg==
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-jose
N:Álvarez Núñez;José;María;;
FN:José María Álvarez Núñez
BDAY:19850309
TEL;TYPE=cell:+34 600 000 101
TEL;TYPE=work:+34 910 000 102
TEL;TYPE=home:+34 910 000 103
EMAIL;TYPE=work:jose.alvarez@example.com
EMAIL;TYPE=home:jose@example.org
ORG:Imprenta del Río
TITLE:Impresor
ADR;CC=ES:;;Calle del Río 8;Madrid;Madrid;28005;España
CATEGORIES:Choir
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-josefine
N:Lindqvist;Josefine;;;
FN:Josefine Lindqvist
BDAY:--0229
EMAIL;TYPE=home:josefine@example.com
ADR;CC=SE:;;Björkvägen 4;Uppsala;;753 20;Sverige
CATEGORIES:Choir
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-grace
N:Okafor;Grace;;Dr.;
FN:Dr. Grace Okafor
TEL;TYPE=work:+1 206 555 0143
EMAIL;TYPE=work:grace@example.com
EMAIL;TYPE=home:okafor@example.org
ORG:Harbor Observatory;Instruments
TITLE:Head of instruments
ADR;CC=US:;;1400 Pine Street;Seattle;WA;98101;United States
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-hanako
N:山田;花子;;;
FN:山田 花子
BDAY:19910505
TEL;TYPE=cell:+81 90 0000 0104
ORG:丸の内書店
ADR;CC=JP:;;丸の内1-1;千代田区;東京都;100-0005;日本
CATEGORIES:Choir
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-minjun
N:김;민준;;;
FN:김민준
EMAIL;TYPE=work:minjun@example.com
ADR;CC=KR:;;세종대로 110;중구;서울특별시;04524;대한민국
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-anna
N:Петрова;Анна;;;
FN:Анна Петрова
BDAY:--1101
TEL;TYPE=cell:+359 88 000 0105
ADR;CC=BG:;;ул. Роза 3;София;;1000;България
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-nikos
N:Παπαδόπουλος;Νίκος;;;
FN:Νίκος Παπαδόπουλος
TEL;TYPE=work:+30 21 0000 0106
ADR;CC=GR:;;Οδός Ελιάς 5;Αθήνα;;105 57;Ελλάδα
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-liat
N:כהן;ליאת;;;
FN:ליאת כהן
EMAIL;TYPE=home:liat@example.com
ADR;CC=IL:;;רחוב הגפן 7;חיפה;;3303107;ישראל
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-omar
N:الحسن;عمر;;;
FN:عمر الحسن
TEL;TYPE=cell:+962 7 0000 0107
ADR;CC=JO:;;شارع الزيتون 9;عمان;;11118;الأردن
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-priya
N:शर्मा;प्रिया;;;
FN:प्रिया शर्मा
BDAY:19880815
EMAIL;TYPE=work:priya@example.com
ADR;CC=IN:;;12 Lotus Road;Pune;Maharashtra;411001;India
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-lukasz
N:Żółkiewski;Łukasz;;;
FN:Łukasz Żółkiewski
TEL;TYPE=home:+48 22 000 01 08
ADR;CC=PL:;;ul. Lipowa 2/14;Kraków;;31-002;Polska
CATEGORIES:Choir
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-francoise
N:Lefèvre;Françoise;Anne;;
FN:Françoise Anne Lefèvre
NICKNAME:Fanfan
BDAY:19520714
TEL;TYPE=home:+33 1 00 00 01 09
ADR;CC=FR:;;3 rue des Tilleuls;Lyon;;69002;France
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-joao
N:da Silva;João;;;
FN:João da Silva
EMAIL;TYPE=home:joao@example.com
ADR;CC=BR;TYPE=home:;;Rua das Laranjeiras\, 210;Rio de Janeiro;RJ;22240-003;Brasil
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-nursery
KIND:org
FN:Gärtnerei Sonnenfeld
ORG:Gärtnerei Sonnenfeld
TEL;TYPE=work:+49 30 23125 110
EMAIL;TYPE=work:garten@example.com
ADR;CC=DE:;;Feldweg 3;Leipzig;;04109;Deutschland
END:VCARD
BEGIN:VCARD
VERSION:4.0
UID:sample-plumber
N:;Plumber;;;
FN:Plumber
TEL;TYPE=work:+44 20 7946 0111
NOTE:Comes on Thursdays.
END:VCARD
BEGIN:VCARD
VERSION:4.0
KIND:group
UID:sample-family
FN:Family
MEMBER:sample-ada
MEMBER:sample-francoise
MEMBER:sample-joao
END:VCARD
BEGIN:VCARD
VERSION:4.0
KIND:group
UID:sample-neighbours
FN:Neighbours
END:VCARD
)";

} // namespace

void makeSampleContacts(SqliteContactStore& store) {
    const auto made = importContacts(store, samples);
    if (!made.problems.empty()) throw std::runtime_error("A sample has a fault: " + made.problems[0].reason);
}

} // namespace bridge::playground
