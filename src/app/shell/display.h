#pragma once

namespace bridge {

// Finds a display that answers, and has Qt use it. Qt itself ends the program when there is none, so this comes before
// any of it. What QT_QPA_PLATFORM asks for is left alone, unless it is a display that does not answer.
bool findDisplay();

// Once Qt has its display: what the program starts finds QT_QPA_PLATFORM as the user left it.
void restoreDisplayChoice();

} // namespace bridge
