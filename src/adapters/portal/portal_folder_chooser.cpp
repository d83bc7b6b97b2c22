#include "adapters/portal/portal_folder_chooser.h"

#include "adapters/portal/portal_request.h"
#include "base/offload.h"

#include <memory>

namespace bridge {

namespace {

// Ends the conversation when the waiting task is dropped.
class Conversation {
public:
    Conversation() = default;
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;
    ~Conversation() { g_cancellable_cancel(m_cancellable.get()); }

    std::shared_ptr<GCancellable> cancellable() const { return m_cancellable; }

private:
    std::shared_ptr<GCancellable> m_cancellable{g_cancellable_new(), GObjectRelease()};
};

} // namespace

PortalFolderChooser::PortalFolderChooser(EventLoop& loop, ParentWindow parentWindow)
    : m_loop(loop), m_parentWindow(std::move(parentWindow)) {}

Task<std::optional<std::string>> PortalFolderChooser::choose(FolderQuestion question) {
    if (!m_worker) m_worker.emplace();
    const Conversation conversation;
    auto parent = m_parentWindow ? m_parentWindow() : std::string();
    auto call = offload(m_loop, *m_worker,
                        [cancellable = conversation.cancellable(), question = std::move(question),
                         parent = std::move(parent)] { return askPortal(question, parent, cancellable.get()); });
    auto chosen = co_await call;
    co_return chosen;
}

} // namespace bridge
