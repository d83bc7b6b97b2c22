#pragma once

#include <libical/ical.h>
#include <memory>

namespace bridge {

struct ICalDeleter {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
    void operator()(icalproperty* property) const { icalproperty_free(property); }
    void operator()(icaltimezone* zone) const { icaltimezone_free(zone, 1); }
    void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
};

template <typename T> using ICalPointer = std::unique_ptr<T, ICalDeleter>;

} // namespace bridge
