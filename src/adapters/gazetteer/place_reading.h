#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace bridge::gazetteer {

// One way to understand what was asked: a place of that name, in all of those areas.
struct Reading {
    std::vector<std::string> words;
    std::vector<std::vector<std::string>> areas; // for each area the tokens that it may be
};

struct Readings {
    std::vector<Reading> strict;
    std::vector<Reading> lenient; // with something left out that nobody knows; for when the strict ones find nothing
};

// Knows the areas that go by a name, or whose names begin so.
class AreaNamesIndex {
public:
    virtual ~AreaNamesIndex() = default;
    virtual std::vector<std::string> named(const std::string& key) = 0;
    virtual std::vector<std::string> beginning(const std::string& key) = 0;
};

// "Paris", "Paris, Texas", "Springfield Illinois", "Deutschland Frankfurt", "日本東京", "80331 München, Germany".
// Nothing for a query without a letter or digit, nor for one of more words than any place has.
Readings readingsOf(std::string_view query, AreaNamesIndex& areas);

} // namespace bridge::gazetteer
