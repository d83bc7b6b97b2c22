#include "adapters/applescript/border.h"

#include "adapters/applescript/application.h"
#include "base/text.h"

namespace bridge::applescript {

namespace {

struct Importer {
    Heap& heap;
    Steps& steps;

    Datum operator()(const std::string& text) const { return heap.text(isUTF8(text) ? text : repairUTF8(text)); }
    Datum operator()(const List& items) const {
        const Steps::Level level(steps);
        auto list = heap.list();
        if (items)
            for (const auto& item : *items)
                list->append(fromApplication(item, heap, steps));
        return list;
    }
    Datum operator()(const Record& fields) const {
        const Steps::Level level(steps);
        auto record = heap.record();
        if (fields)
            for (const auto& [key, field] : *fields)
                record->set(key, fromApplication(field, heap, steps));
        return record;
    }
    Datum operator()(const ObjectPointer& object) const {
        if (!object) return MissingValue{};
        return object;
    }
    template <typename Plain> Datum operator()(const Plain& plain) const { return plain; }
};

struct Exporter {
    Steps::Copy& copy;

    Value exported(const Datum& datum) const {
        copy.take(sizeof(Value));
        return std::visit(*this, static_cast<const Datum::variant&>(datum));
    }
    Value operator()(const Nothing&) const { return MissingValue{}; }
    Value operator()(const Text& text) const {
        copy.take(text->text().size());
        return text->text();
    }
    Value operator()(const ListReference& list) const {
        const Steps::Level level(copy);
        auto items = std::make_shared<std::vector<Value>>();
        for (const auto& item : list->items())
            items->push_back(exported(item));
        return items;
    }
    Value operator()(const RecordReference& record) const {
        const Steps::Level level(copy);
        auto fields = std::make_shared<std::vector<std::pair<std::string, Value>>>();
        for (size_t index = 0; index < record->size(); ++index) {
            copy.take(record->key(index).size());
            fields->emplace_back(record->key(index), exported(record->values()[index]));
        }
        return fields;
    }
    template <typename Plain> Value operator()(const Plain& value) const { return value; }
};

} // namespace

Datum fromApplication(const Value& value, Heap& heap, Steps& steps) {
    return std::visit(Importer{heap, steps}, static_cast<const Value::variant&>(value));
}

Value toApplication(const Datum& datum, Steps& steps) {
    Steps::Copy copy(steps);
    return Exporter{copy}.exported(datum);
}

} // namespace bridge::applescript
