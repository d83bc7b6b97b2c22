#include "adapters/eds/item_move.h"

namespace bridge {

namespace {

// The calendar held no item of this UID before.
void takeBack(CalendarClient& target, const std::string& uid, Call& call) {
    call.goThrough();
    if (target.object(uid, call.cancellable())) target.remove(uid, call.cancellable());
}

std::string addCopy(CalendarClient& target, const CalendarObject& item, Call& call) {
    try {
        return target.create(item, call.cancellable());
    } catch (const EdsError& error) {
        // One whose answer never came may have been added.
        if (error.fault != EdsFault::exists) takeBack(target, item.uid(), call);
        throw;
    }
}

} // namespace

std::string moveItem(CalendarClient& target, const CalendarObject& item, const Removal& removal, Call& call) {
    call.goThrough();
    const auto uid = addCopy(target, item, call);
    try {
        removal.remove(call.cancellable());
    } catch (const PlatformError&) {
        call.goThrough();
        if (removal.isDone(call.cancellable())) return uid;
        takeBack(target, uid, call);
        throw;
    }
    return uid;
}

} // namespace bridge
