#pragma once

#include "base/platform_error.h"
#include "platform/trash.h"

#include <functional>

namespace bridge {

// A Trash that fails when told, and lets a test step in just before an item goes.
class FailingTrash : public Trash {
public:
    explicit FailingTrash(Trash& real) : m_real(real) {}

    bool fails = false;
    std::function<void()> before;

    void moveToTrash(const TrashItem& item) override {
        if (fails) throw PlatformError("The Trash is full.");
        if (before) before();
        m_real.moveToTrash(item);
    }

private:
    Trash& m_real;
};

} // namespace bridge
