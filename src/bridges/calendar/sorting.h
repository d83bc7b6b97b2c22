#pragma once

#include <algorithm>
#include <vector>

namespace bridge {

// In ascending order of keyOf(value); each key is made once. Equal ones keep their order.
template <typename T, typename KeyOf> std::vector<T> sortedBy(std::vector<T> values, KeyOf keyOf) {
    using Key = decltype(keyOf(values.front()));
    std::vector<std::pair<Key, T>> keyed;
    keyed.reserve(values.size());
    for (auto& value : values) {
        auto key = keyOf(value);
        keyed.emplace_back(std::move(key), std::move(value));
    }
    std::ranges::stable_sort(keyed, {}, &std::pair<Key, T>::first);
    for (size_t index = 0; index < values.size(); ++index)
        values[index] = std::move(keyed[index].second);
    return values;
}

} // namespace bridge
