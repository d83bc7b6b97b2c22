#include "adapters/iworkapps/numbers_application.h"
#include "tests/adapters/iworkapps/office_script.h"

namespace bridge::iworkapps {

using office::FakeOffice;

class Tables : public OfficeScript<NumbersApplication> {
protected:
    // Two sheets: a grid of three rows and two columns, and another with the table "Prices" at C3:D4.
    Tables() {
        auto plan = FakeOffice::emptyContent(DocumentKind::spreadsheet);
        plan.sheets.front().name = "First";
        plan.sheets.front().cells = {{{0, 0}, std::string("a")}, {{2, 1}, 5.0}};
        plan.sheets.push_back({"Say \"more\"", {{{2, 2}, true}}, {{"Prices", {2, 2, 3, 3}}}});
        plan.activeSheet = 1;
        office.files.emplace("/plan.numbers", plan);
        document = open("/plan.numbers");
    }

    ObjectPointer first() { return at(at(document, "sheet", 1), "table", 1); }
    ObjectPointer prices() { return at(at(document, "sheet", 2), "table", 2); }

    ObjectPointer document;
};

TEST_F(Tables, LieOnSheets) {
    EXPECT_EQ(document->count("sheet", call), 2U);
    EXPECT_EQ(get(at(document, "sheet", 1), "name"), Value(std::string("First")));
    EXPECT_EQ(at(document, "sheet", 3), nullptr);
    const auto sheet = named(document, "sheet", "say \"MORE\"");
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->count("table", call), 2U);
    EXPECT_EQ(named(sheet, "table", "Prices")->description(),
              "table \"Prices\" of sheet \"Say \"more\"\" of document \"plan.numbers\"");
    EXPECT_EQ(named(sheet, "table", "Costs"), nullptr);
    EXPECT_EQ(named(document, "sheet", "Second"), nullptr);
}

TEST_F(Tables, LieOnTheActiveSheet) {
    const auto active = getObject(document, "active sheet");
    EXPECT_TRUE(active->isSameAs(*at(document, "sheet", 2)));
    EXPECT_FALSE(active->isSameAs(*at(document, "sheet", 1)));
    getObject(document, "active sheet");
    EXPECT_EQ(office.count("activeSheet"), 1U);
}

TEST_F(Tables, AreAsLargeAsWhatIsInThem) {
    EXPECT_EQ(get(first(), "row count"), Value(int64_t{3}));
    EXPECT_EQ(get(first(), "column count"), Value(int64_t{2}));
    EXPECT_EQ(get(getObject(prices(), "cell range"), "name"), Value(std::string("A1:B2")));
    EXPECT_EQ(first()->count("cell", call), 6U);
    EXPECT_EQ(first()->elements("row", call).size(), 3U);
    EXPECT_EQ(first()->elements("column", call).size(), 2U);
    EXPECT_EQ(office.count("sheets"), 1U);
}

TEST_F(Tables, OfANewDocumentHaveOneCell) {
    const auto table = at(at(make("document"), "sheet", 1), "table", 1);
    EXPECT_EQ(get(table, "row count"), Value(int64_t{1}));
    EXPECT_EQ(get(table, "column count"), Value(int64_t{1}));
    EXPECT_EQ(get(table, "name"), Value(std::string("Table 1")));
}

TEST_F(Tables, CanBeResized) {
    set(first(), "row count", int64_t{2});
    set(first(), "column count", 7.0);
    EXPECT_EQ(get(first(), "row count"), Value(int64_t{2}));
    EXPECT_EQ(get(first(), "column count"), Value(int64_t{7}));
    EXPECT_EQ(get(named(first(), "cell", "B3"), "value"), Value(MissingValue{}));
    set(prices(), "row count", int64_t{5});
    EXPECT_TRUE(named(prices(), "cell", "B5"));
    EXPECT_EQ(office.count("resizeTable"), 3U);
}

TEST_F(Tables, KeepOneRowAndOneColumn) {
    EXPECT_EQ(refusalOf([&] { set(first(), "row count", int64_t{0}); }),
              (Refusal{-10000, "A table has at least one row and one column."}));
    EXPECT_EQ(refusalOf([&] { set(first(), "column count", int64_t{-1}); }),
              (Refusal{-1700, "Can’t make -1 into type integer."}));
    EXPECT_EQ(refusalOf([&] { set(first(), "row count", std::string("many")); }).number, -1700);
}

TEST_F(Tables, GrowWithWhatIsPutIntoThem) {
    set(named(first(), "cell", "E9"), "value", true);
    EXPECT_EQ(get(first(), "row count"), Value(int64_t{9}));
    EXPECT_EQ(get(first(), "column count"), Value(int64_t{5}));
    set(named(first(), "cell", "Z99"), "value", MissingValue{});
    EXPECT_EQ(get(first(), "row count"), Value(int64_t{9}));
}

TEST_F(Tables, OfANameHaveTheRoomThatTheyHave) {
    EXPECT_TRUE(named(prices(), "cell", "B2"));
    EXPECT_EQ(named(prices(), "cell", "C1"), nullptr);
    EXPECT_EQ(named(prices(), "cell", "A3"), nullptr);
    EXPECT_EQ(named(prices(), "range", "A1:C1"), nullptr);
    EXPECT_TRUE(named(first(), "cell", "XFD1048576"));
}

TEST_F(Tables, RefuseWhatTheyDoNotHave) {
    const auto refused = [&](auto action) { return refusalOf(action).number; };
    EXPECT_EQ(refused([&] { set(first(), "name", std::string("x")); }), -10006);
    EXPECT_EQ(refused([&] { set(at(document, "sheet", 1), "name", std::string("x")); }), -10006);
    EXPECT_EQ(refused([&] { get(first(), "header row count"); }), -1728);
    EXPECT_EQ(refused([&] { first()->elements("range", call); }), -1728);
    EXPECT_EQ(refused([&] { first()->elements("slide", call); }), -1728);
    EXPECT_EQ(refused([&] { at(document, "sheet", 1)->elements("cell", call); }), -1728);
    EXPECT_EQ(refused([&] { perform("make", document, {{"new", ClassName{"sheet"}}}); }), -2710);
    EXPECT_EQ(refused([&] { perform("clear", document); }), -1708);
    EXPECT_EQ(refused([&] { perform("clear", std::nullopt); }), -1708);
}

} // namespace bridge::iworkapps
