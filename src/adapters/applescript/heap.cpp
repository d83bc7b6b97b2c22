#include "adapters/applescript/heap.h"

#include "adapters/applescript/errors.h"

#include <algorithm>

namespace bridge::applescript {

namespace {

constexpr size_t cellSize = 128;
// A vector that has just grown has room for as much again.
constexpr size_t itemSize = 2 * sizeof(Datum);
constexpr size_t fieldSize = itemSize + 2 * sizeof(std::string);

} // namespace

const std::string* Datum::text() const {
    const auto* cell = as<Text>();
    return cell ? &(*cell)->text() : nullptr;
}

ListCell* Datum::list() const {
    const auto* cell = as<ListReference>();
    return cell ? cell->get() : nullptr;
}

RecordCell* Datum::record() const {
    const auto* cell = as<RecordReference>();
    return cell ? cell->get() : nullptr;
}

Object* Datum::object() const {
    const auto* pointer = as<ObjectPointer>();
    return pointer ? pointer->get() : nullptr;
}

Cell::Cell(Heap& heap) : m_heap(heap) {
    grow(cellSize);
    m_next = std::exchange(heap.m_first, this);
    if (m_next) m_next->m_previous = this;
}

Cell::~Cell() {
    (m_previous ? m_previous->m_next : m_heap.m_first) = m_next;
    if (m_next) m_next->m_previous = m_previous;
    m_heap.m_size -= m_size;
}

void Cell::grow(size_t bytes) {
    if (bytes > Heap::largest - m_heap.m_size) throw memoryExhausted();
    m_heap.m_size += bytes;
    m_size += bytes;
}

void Cell::drop(std::vector<Datum> elements) {
    if (!elements.empty()) m_heap.bury(std::move(elements));
}

TextCell::TextCell(Heap& heap, std::string text) : Cell(heap), m_text(std::move(text)) {
    if (m_text.size() > Heap::largestText) throw memoryExhausted();
    grow(m_text.capacity());
}

void ListCell::append(Datum item) {
    grow(itemSize);
    m_items.push_back(std::move(item));
}

void ListCell::prepend(Datum item) {
    grow(itemSize);
    m_items.insert(m_items.begin(), std::move(item));
}

const Datum* RecordCell::find(std::string_view key) const {
    const auto found = std::find(m_keys.begin(), m_keys.end(), key);
    return found == m_keys.end() ? nullptr : &m_values[static_cast<size_t>(found - m_keys.begin())];
}

void RecordCell::set(const std::string& key, Datum value) {
    const auto found = std::find(m_keys.begin(), m_keys.end(), key);
    if (found != m_keys.end()) {
        m_values[static_cast<size_t>(found - m_keys.begin())] = std::move(value);
        return;
    }
    grow(fieldSize + key.size());
    m_keys.push_back(key);
    m_values.push_back(std::move(value));
}

Heap::~Heap() {
    // Whatever still lives does so in a circle, which ends when all are empty.
    std::vector<std::vector<Datum>> contents;
    for (auto* cell = m_first; cell; cell = cell->m_next)
        contents.push_back(cell->take());
}

Datum Heap::text(std::string text) {
    return std::make_shared<const TextCell>(*this, std::move(text));
}

void Heap::bury(std::vector<Datum> elements) {
    m_buried.push_back(std::move(elements));
    if (std::exchange(m_isBurying, true)) return;
    while (!m_buried.empty()) {
        const auto next = std::move(m_buried.back());
        m_buried.pop_back();
    }
    m_isBurying = false;
}

} // namespace bridge::applescript
