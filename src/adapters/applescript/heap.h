#pragma once

#include "adapters/applescript/datum.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bridge::applescript {

class Heap;

// Something that the heap counts. It remembers those that live, because lists may contain one another in a circle.
class Cell {
public:
    explicit Cell(Heap& heap);
    Cell(const Cell&) = delete;
    Cell& operator=(const Cell&) = delete;
    virtual ~Cell();

protected:
    // Throws out of memory and takes nothing when that is too much.
    void grow(size_t bytes);
    // The elements go without recursion, however deep they are nested.
    void drop(std::vector<Datum> elements);

private:
    friend class Heap;
    virtual std::vector<Datum> take() { return {}; }

    Heap& m_heap;
    size_t m_size = 0;
    Cell* m_previous = nullptr;
    Cell* m_next = nullptr;
};

class TextCell : public Cell {
public:
    TextCell(Heap& heap, std::string text);
    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

class ListCell : public Cell {
public:
    using Cell::Cell;
    ~ListCell() override { drop(std::move(m_items)); }

    const std::vector<Datum>& items() const { return m_items; }
    void append(Datum item);
    void prepend(Datum item);
    void replace(size_t index, Datum item) { m_items[index] = std::move(item); }

private:
    std::vector<Datum> take() override { return std::exchange(m_items, {}); }

    std::vector<Datum> m_items;
};

class RecordCell : public Cell {
public:
    using Cell::Cell;
    ~RecordCell() override { drop(std::move(m_values)); }

    size_t size() const { return m_keys.size(); }
    const std::string& key(size_t index) const { return m_keys[index]; }
    const std::vector<Datum>& values() const { return m_values; }
    const Datum* find(std::string_view key) const;
    void set(const std::string& key, Datum value);

private:
    std::vector<Datum> take() override { return std::exchange(m_values, {}); }

    std::vector<std::string> m_keys;
    std::vector<Datum> m_values;
};

// The memory of one script. Outlives every datum of it.
class Heap {
public:
    // Enough for the largest document that an operation passes, many times over, and little enough for any machine.
    static constexpr size_t largest = 256U << 20;
    static constexpr size_t largestText = 64U << 20;

    Heap() = default;
    Heap(const Heap&) = delete;
    Heap& operator=(const Heap&) = delete;
    ~Heap();

    Datum text(std::string text);
    ListReference list() { return std::make_shared<ListCell>(*this); }
    RecordReference record() { return std::make_shared<RecordCell>(*this); }

    size_t size() const { return m_size; }

private:
    friend class Cell;
    void bury(std::vector<Datum> elements);

    Cell* m_first = nullptr;
    size_t m_size = 0;
    std::vector<std::vector<Datum>> m_buried;
    bool m_isBurying = false;
};

} // namespace bridge::applescript
