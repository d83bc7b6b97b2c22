// What the address sanitizer's leak check has to know of libraries, for programs of tests that stand on them.

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
// Qt Quick keeps pictures that are no longer shown for half a minute, and at the end of the program drops them.
// Evolution Data Server may answer with a name that it has freed, when the last connection to a source closes while
// another is made: the connection is made anew, but of the one without a name GLib has lost two weak references.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:QQuickPixmap::load\nleak:QQuickImage::updatePaintNode\n"
           "leak:e_dbus_address_book_proxy_new_sync\nleak:e_dbus_calendar_proxy_new_sync\n";
}
// Only the stack tells these from what might be ours. It can't be walked the fast way in these libraries, but a dozen
// calls of it tell enough.
extern "C" const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0:malloc_context_size=12";
}
#endif
#endif
