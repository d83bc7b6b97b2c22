#pragma once

class QWindow;

namespace bridge {

// What Qt does not tell an X server, and does not ask it. Where windows are shown by something else nothing happens.

// Keeps the window out of task bars and pagers. A window manager forgets it when the window is hidden, so this is said
// before each show.
void keepOutOfTaskbar(QWindow& window);

// Whether windows are blended, so that what is transparent in them shows what is behind.
bool blendsWindows();

} // namespace bridge
