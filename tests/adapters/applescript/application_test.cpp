#include "tests/adapters/applescript/script_test.h"

namespace bridge::applescript {

using testing::ElementsAre;

// A shop with two shelves and five goods.
class Telling : public ScriptTest {
protected:
    Telling() {
        left = shop->root->add("shelf", {{"name", "Left"}, {"id", int64_t{7}}, {"colour", Constant{"red"}}});
        right = shop->root->add("shelf", {{"name", "Right"}, {"id", int64_t{8}}, {"colour", Constant{"dark red"}}});
        for (int64_t price : {5, 10, 15})
            left->add("good", {{"name", "L" + std::to_string(price)}, {"price", price}});
        for (int64_t price : {10, 20})
            right->add("good", {{"name", "R" + std::to_string(price)}, {"price", price}});
        shop->root->properties["favourite shelf"] = ObjectPointer(right);
        shop->root->properties["end date"] = "tomorrow";
        shop->actions["sell"] = [](const Command&, ScriptCall&) { return Value("sold"); };
    }

    std::string told(const std::string& body) { return text("tell application \"Shop\"\n" + body + "\nend tell"); }
    std::string refused(const std::string& body) {
        return errorText("tell application \"Shop\"\n" + body + "\nend tell");
    }
    std::string names(const std::string& list) { return told("name of (" + list + ")"); }

    std::shared_ptr<MemoryObject> left, right;
};

TEST_F(Telling, FindsElements) {
    EXPECT_EQ(told("name of shelf 1"), "Left");
    EXPECT_EQ(told("name of shelf \"right\""), "Right");
    EXPECT_EQ(told("name of shelf id 8"), "Right");
    EXPECT_EQ(told("name of shelf named \"Left\""), "Left");
    EXPECT_EQ(told("set i to 2\nname of shelf i"), "Right");
    EXPECT_EQ(told("name of shelf (1 + 1)"), "Right");
    EXPECT_EQ(told("name of shelf -1"), "Right");
    EXPECT_EQ(told("name of first shelf"), "Left");
    EXPECT_EQ(told("name of last good of the second shelf"), "R20");
    EXPECT_EQ(told("name of middle good of shelf 1"), "L10");
    EXPECT_EQ(told("name of front shelf"), "Left");
    EXPECT_EQ(told("shelf 1's name"), "Left");
    EXPECT_EQ(told("name of good 2 of shelf 1"), "L10");
    EXPECT_EQ(told("name of favourite shelf"), "Right");
    EXPECT_EQ(told("name of good 1 in favourite shelf"), "R10");
    EXPECT_EQ(told("get end date"), "tomorrow");
    EXPECT_EQ(told("class of shelf 1"), "shelf");
}

TEST_F(Telling, FindsManyElements) {
    EXPECT_EQ(names("every shelf"), "{Left, Right}");
    EXPECT_EQ(names("shelves"), "{Left, Right}");
    EXPECT_EQ(names("goods 2 thru 3 of shelf 1"), "{L10, L15}");
    EXPECT_EQ(names("goods of shelf 2"), "{R10, R20}");
    EXPECT_EQ(told("name of goods of every shelf"), "{{L5, L10, L15}, {R10, R20}}");
    EXPECT_EQ(told("count of goods of shelf 1"), "3");
    EXPECT_EQ(told("count every shelf"), "2");
    EXPECT_EQ(told("count shelves"), "2");
    EXPECT_EQ(told("number of goods of shelf 2"), "2");
    EXPECT_EQ(told("item 2 of (get name of every shelf)"), "Right");
    EXPECT_EQ(told("price of every good of shelf 1"), "{5, 10, 15}");
}

TEST_F(Telling, FiltersElements) {
    EXPECT_EQ(names("every good of shelf 1 whose price > 5"), "{L10, L15}");
    EXPECT_EQ(names("goods of shelf 1 where price is 10 or name is \"l5\""), "{L5, L10}");
    EXPECT_EQ(names("every good of shelf 1 whose (price ≥ 10 and name does not contain \"15\")"), "{L10}");
    EXPECT_EQ(names("every good of shelf 1 whose not price is 10"), "{L5, L15}");
    EXPECT_EQ(names("every shelf whose id of it is 8"), "{Right}");
    EXPECT_EQ(names("every shelf where its id is 7"), "{Left}");
    EXPECT_EQ(names("every shelf whose colour is dark red"), "{Right}");
    EXPECT_EQ(told("name of every good of shelf 1 whose price < 15"), "{L5, L10}");
    EXPECT_EQ(told("name of first good of shelf 1 whose price > 5"), "L10");
    EXPECT_EQ(told("name of last good of shelf 1 whose price > 5"), "L15");
    EXPECT_EQ(told("name of some good of shelf 1 whose price > 10"), "L15");
    EXPECT_EQ(told("count (every good of shelf 1 whose price > 100)"), "0");
    EXPECT_EQ(told("count every good of shelf 1 whose price > 5"), "2");
    EXPECT_EQ(refused("get first good of shelf 1 whose price > 100"),
              "Can’t get good 1 of shelf \"Left\" whose condition holds. Invalid index.");
}

TEST_F(Telling, AsksTheApplicationToFilterWhereItCan) {
    left->knowsAllAtOnce = true;
    EXPECT_EQ(names("every good of shelf 1 whose name is \"L10\""), "{L10}");
    EXPECT_EQ(told("set n to \"L10\"\nprice of (first good of shelf 1 whose name is n)"), "10");
    EXPECT_EQ(left->askedAtOnce, 2);
    // What depends on each element, or on more than equality, is for us to find out.
    EXPECT_EQ(names("every good of shelf 1 whose name is not \"L10\""), "{L5, L15}");
    EXPECT_EQ(names("every good of shelf 1 whose name is name"), "{L5, L10, L15}");
    EXPECT_EQ(names("every good of shelf 1 whose price is 10"), "{L10}");
    EXPECT_EQ(told("considering case\nreturn count (every good of shelf 1 whose name is \"l10\")\nend"), "0");
    EXPECT_EQ(left->askedAtOnce, 2);
}

TEST_F(Telling, SaysWhatIsNotThere) {
    EXPECT_EQ(refused("get shelf 3"), "Can’t get shelf 3 of application \"Shop\".");
    EXPECT_EQ(refused("get good 9 of shelf 1"), "Can’t get good 9 of shelf \"Left\".");
    EXPECT_EQ(refused("get shelf \"Middle\""), "Can’t get shelf \"Middle\" of application \"Shop\".");
    EXPECT_EQ(refused("get shelf id 3"), "Can’t get shelf id 3 of application \"Shop\".");
    EXPECT_EQ(refused("get price of shelf 1"), "Can’t get price of shelf \"Left\".");
    EXPECT_EQ(refused("get nonsense of shelf 1"), "Can’t get nonsense of shelf \"Left\".");
    EXPECT_EQ(refused("get goods 1 thru 9 of shelf 1"), "Can’t get goods 1 thru 9 of shelf \"Left\".");
    EXPECT_EQ(errorNumber("tell application \"Shop\" to get shelf 3"), -1728);
    EXPECT_EQ(told("exists shelf 3"), "false");
    EXPECT_EQ(told("shelf 1 exists"), "true");
    EXPECT_EQ(told("if not (exists shelf \"Up\") then return \"none\""), "none");
    EXPECT_EQ(told("exists (every shelf whose id is 3)"), "false");
}

TEST_F(Telling, SetsProperties) {
    told("set price of good 1 of shelf 1 to 6");
    EXPECT_EQ(*left->children["good"][0]->properties["price"].as<int64_t>(), 6);
    told("set price of every good of shelf 2 to 1");
    EXPECT_EQ(told("price of every good of shelf 2"), "{1, 1}");
    told("tell shelf 1 to set its name to \"New\"");
    EXPECT_EQ(told("name of shelf 1"), "New");
    told("tell shelf 1\ncopy \"Other\" to name\nset colour to red\nend tell");
    EXPECT_EQ(told("name of shelf 1"), "Other");
    left->refused = "name";
    EXPECT_EQ(refused("set name of shelf 1 to \"x\""), "Can’t set name of shelf \"Other\".");
}

TEST_F(Telling, NestsInOneAnother) {
    EXPECT_EQ(told("tell shelf 1\ntell good 2\nreturn name\nend tell\nend tell"), "L10");
    EXPECT_EQ(told("tell shelf 1 to tell good 3 to return its name"), "L15");
    EXPECT_EQ(told("tell shelf 2\nset x to name of it\nend tell\nx & name"), "RightShop");
    EXPECT_EQ(text("tell shelf 2 of application \"Shop\" to get name"), "Right");
    EXPECT_EQ(text("tell application \"Shop\" to tell shelf 2 to get name"), "Right");
    EXPECT_EQ(text("using terms from application \"Shop\"\nset s to {shelf mark:3}\nend using terms from\nusing terms "
                   "from application \"shop\"\nshelf mark of s\nend"),
              "3");
}

TEST_F(Telling, FindsItsTargetOnce) {
    shop->root->asked = 0;
    told("tell favourite shelf\nget name\nget name\nget name\nend tell");
    EXPECT_EQ(shop->root->asked, 1);
}

TEST_F(Telling, GivesCommandsTheirParameters) {
    told("sell good 1 of shelf 1 to \"Ann\" for 3 + 4");
    told("sell goods of shelf 2 for cash with gift wrap and by post");
    told("tell good 1 of shelf 2 to sell to \"Bob\" without gift wrap");
    told("tell shelf 1\nsell\nend tell");
    told("sell {1, {a:true, shelf mark:2}} gift wrap true");
    EXPECT_EQ(told("set x to sell 3\nx & \"!\""), "sold!");
    EXPECT_EQ(told("if (sell 3) is \"SOLD\" then return 5"), "5");
    EXPECT_THAT(shop->said(), ElementsAre("sell good \"L5\" to \"Ann\" for 7",
                                          "sell {good \"R10\", good \"R20\"} for cash gift wrap true by post true",
                                          "sell good \"R10\" to \"Bob\" gift wrap false", "sell shelf \"Left\"",
                                          "sell {1, {a:true, shelf mark:2}} gift wrap true", "sell 3", "sell 3"));
    EXPECT_EQ(refused("sell 3 with nonsense"), "Line 2: Expected label of a parameter but found “nonsense”.");
}

TEST_F(Telling, KnowsTheStandardCommands) {
    told("make new good at end of goods of shelf 1 with properties {name:\"New\", price:1}");
    EXPECT_EQ(names("goods of shelf 1"), "{L5, L10, L15, New}");
    told("duplicate good 1 of shelf 1 to shelf 2");
    EXPECT_EQ(names("goods of shelf 2"), "{R10, R20, L5}");
    told("delete (every good of shelf 2 whose price > 5)");
    EXPECT_EQ(names("goods of shelf 2"), "{L5}");
    EXPECT_EQ(refused("quit saving no"), "application \"Shop\" doesn’t understand the “quit” message.");
    EXPECT_EQ(errorNumber("tell application \"Shop\" to activate"), -1708);
}

TEST_F(Telling, MakesErrorsOfWhateverIsThrown) {
    shop->actions["fail"] = [](const Command&, ScriptCall&) -> Value { throw std::runtime_error("Broken"); };
    EXPECT_EQ(refused("fail"), "Broken");
    EXPECT_EQ(told("try\nfail\non error m number n\nreturn m & n\nend try"), "Broken-10000");
}

TEST_F(Telling, SeparatesListsOfTheApplicationFromThoseOfTheScript) {
    auto items = std::make_shared<std::vector<Value>>(std::vector<Value>{int64_t{1}});
    shop->actions["sell"] = [&](const Command&, ScriptCall&) { return Value(List(items)); };
    EXPECT_EQ(told("set l to sell 1\nset end of l to l\ncount l"), "2");
    EXPECT_EQ(items->size(), 1U);
}

TEST_F(Telling, TellsEveryApplicationThatItIsOver) {
    EXPECT_EQ(errorNumber("tell application \"Shop\"\nerror \"x\"\nend tell\ntell application \"MUSIC\"\nend tell"),
              -2700);
    EXPECT_EQ(shop->ended, 1);
    EXPECT_EQ(music->ended, 1);
    EXPECT_EQ(pages->ended, 0);
}

} // namespace bridge::applescript
