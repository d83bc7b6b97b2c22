// What the address sanitizer's leak check has to know of Evolution Data Server's libraries.

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
// The service may answer with a name that it has freed, when the last connection to a source closes while another is
// made. The connection is made anew, but of the one without a name GLib has lost two weak references. Only whole stacks
// tell these from what might be ours, and GLib's can't be walked the fast way; twelve calls tell enough.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:e_dbus_address_book_proxy_new_sync\nleak:e_dbus_calendar_proxy_new_sync\n";
}
extern "C" const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0:malloc_context_size=12";
}
#endif
#endif
