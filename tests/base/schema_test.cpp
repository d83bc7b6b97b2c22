#include "base/schema.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace bridge {
namespace {

enum class Colour { red, seaGreen };

[[maybe_unused]] std::string_view wireName(Colour colour) {
    return colour == Colour::red ? "red" : "seaGreen";
}
std::array<std::string_view, 2> wireNames(std::type_identity<Colour>) {
    return {wireName(Colour::red), wireName(Colour::seaGreen)};
}

struct Leaf {
    std::string title;
    std::optional<Colour> colour;
    static constexpr auto fields() {
        return std::tuple{required("title", &Leaf::title), optional("colour", &Leaf::colour)};
    }
};

struct Everything {
    std::string text;
    std::optional<int64_t> limit;
    double ratio = 0;
    bool flag = false;
    Date when;
    Bytes blob;
    URL link;
    std::vector<Leaf> leaves;
    std::optional<Leaf> cover;
    std::map<std::string, bool> switches;
    JSONValue anything;
    static constexpr auto fields() {
        return std::tuple{required("text", &Everything::text),        optional("limit", &Everything::limit),
                          required("ratio", &Everything::ratio),      required("flag", &Everything::flag),
                          required("when", &Everything::when),        required("blob", &Everything::blob),
                          required("link", &Everything::link),        required("leaves", &Everything::leaves),
                          optional("cover", &Everything::cover),      required("switches", &Everything::switches),
                          required("anything", &Everything::anything)};
    }
};

struct Optionals {
    std::optional<bool> only;
    static constexpr auto fields() { return std::tuple{optional("only", &Optionals::only)}; }
};

struct Branch {
    std::vector<Branch> branches;
    static constexpr auto fields() { return std::tuple{required("branches", &Branch::branches)}; }
};

namespace elsewhere {
struct Leaf {
    bool flag = false;
    static constexpr auto fields() { return std::tuple{required("flag", &Leaf::flag)}; }
};
} // namespace elsewhere

template <typename T> std::string described() {
    SchemaBook book;
    return writeJSON(book.describe<T>());
}

// As the book has it.
template <typename T> std::string inBook(std::string_view name) {
    SchemaBook book;
    book.describe<T>();
    return writeJSON(book.take().find(name)->second);
}

TEST(Schema, OfARecordFollowsItsFieldList) {
    EXPECT_EQ(inBook<Everything>("Everything"),
              R"({"properties":{"anything":{},"blob":{"contentEncoding":"base64","type":"string"},)"
              R"("cover":{"$ref":"#/components/schemas/Leaf"},"flag":{"type":"boolean"},)"
              R"("leaves":{"items":{"$ref":"#/components/schemas/Leaf"},"type":"array"},"limit":{"type":"integer"},)"
              R"("link":{"format":"uri","type":"string"},"ratio":{"type":"number"},)"
              R"("switches":{"additionalProperties":{"type":"boolean"},"type":"object"},"text":{"type":"string"},)"
              R"("when":{"format":"date-time","type":"string"}},)"
              R"("required":["text","ratio","flag","when","blob","link","leaves","switches","anything"],)"
              R"("type":"object"})");
}

TEST(Schema, OfAnEnumerationSaysItsNames) {
    EXPECT_EQ(inBook<Colour>("Colour"), R"({"enum":["red","seaGreen"],"type":"string"})");
}

TEST(Schema, WithoutARequiredFieldSaysNothingOfThem) {
    EXPECT_EQ(inBook<Optionals>("Optionals"), R"({"properties":{"only":{"type":"boolean"}},"type":"object"})");
}

TEST(SchemaBook, RefersToWhatHasAName) {
    EXPECT_EQ(described<Leaf>(), R"({"$ref":"#/components/schemas/Leaf"})");
    EXPECT_EQ(described<Colour>(), R"({"$ref":"#/components/schemas/Colour"})");
    EXPECT_EQ(described<std::vector<std::vector<double>>>(),
              R"({"items":{"items":{"type":"number"},"type":"array"},"type":"array"})");
}

TEST(SchemaBook, HoldsEachTypeAndThoseInItOnce) {
    SchemaBook book;
    book.describe<Everything>();
    book.describe<std::vector<Everything>>();
    const auto schemas = book.take();
    std::vector<std::string> names;
    for (const auto& [name, schema] : schemas)
        names.push_back(name);
    EXPECT_EQ(names, (std::vector<std::string>{"Colour", "Everything", "Leaf"}));
    EXPECT_TRUE(book.take().empty());
}

TEST(SchemaBook, TypeMayContainItself) {
    EXPECT_EQ(inBook<Branch>("Branch"),
              R"({"properties":{"branches":{"items":{"$ref":"#/components/schemas/Branch"},"type":"array"}},)"
              R"("required":["branches"],"type":"object"})");
}

TEST(SchemaBook, RefusesOneNameForTwoTypes) {
    SchemaBook book;
    book.describe<Leaf>();
    EXPECT_THROW(book.describe<elsewhere::Leaf>(), std::logic_error);
    EXPECT_NO_THROW(book.describe<Leaf>());
}

} // namespace
} // namespace bridge
