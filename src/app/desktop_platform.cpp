#include "adapters/jsonfile/preferred_secure_store.h"
#include "adapters/xdg/home_trash.h"
#include "adapters/xdg/xdg_paths.h"
#include "app/platform.h"
#include "base/log.h"
#ifdef HAVE_GIO
#include "adapters/gio/gio_trash.h"
#endif
#ifdef HAVE_SECRET
#include "adapters/secretservice/secret_service_store.h"
#endif

namespace bridge {

namespace {

constexpr const char* folderName = "/brindlefox-apple-bridge";

std::unique_ptr<SecureStore> openKeyring([[maybe_unused]] EventLoop& loop) {
#ifdef HAVE_SECRET
    return loop.runUntilDone(SecretServiceStore::open(loop));
#else
    return nullptr;
#endif
}

std::unique_ptr<Trash> openTrash(const XdgPaths& paths) {
#ifdef HAVE_GIO
    return std::make_unique<GioTrash>(HomeTrash(paths.homeTrash()));
#else
    return std::make_unique<HomeTrash>(paths.homeTrash());
#endif
}

} // namespace

Platform openDesktopPlatform(EventLoop& loop) {
    const XdgPaths paths;
    const auto folder = paths.dataHome + folderName;
    auto platform = openEmbeddedPlatform(loop, folder);
    platform.secureStore = std::make_unique<PreferredSecureStore>(openKeyring(loop), std::move(platform.secureStore));
    platform.trash = openTrash(paths);
    log::note("The credential is kept in " + platform.secureStore->description() + ".");
    return platform;
}

} // namespace bridge
