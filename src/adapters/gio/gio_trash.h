#pragma once

#include "adapters/xdg/home_trash.h"

namespace bridge {

// The Trash of the home folder, and for items on other volumes the volume's own, as the freedesktop.org Trash standard
// 1.0 has it: $topdir/.Trash/$uid where an administrator made .Trash a real sticky folder, else $topdir/.Trash-$uid.
// Nothing is ever copied to another volume. Which volume an item is on, GIO says.
class GioTrash : public Trash {
public:
    explicit GioTrash(HomeTrash home) : m_home(std::move(home)) {}

    void moveToTrash(const TrashItem& item) override;

private:
    HomeTrash m_home;
};

} // namespace bridge
