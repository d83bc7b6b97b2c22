// What the address sanitizer's leak check has to know of Qt, for programs that show windows.

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
// Qt Quick keeps pictures that are no longer shown for half a minute, and at the end of the program drops them. Only
// whole stacks tell these from what might be ours, and Qt's can't be walked the fast way.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:QQuickPixmap::load\nleak:QQuickImage::updatePaintNode\n";
}
extern "C" const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0";
}
#endif
#endif
