#pragma once

namespace bridge {

// Qt ends the program when the display server goes away, in the middle of whatever it does. While this lives, such an
// end is said in the log and stays an end: nothing is destroyed under what still runs. The answer of the process is 1,
// so that a service manager starts it again, without a display if there is none.
class DisplayLoss {
public:
    DisplayLoss();
    ~DisplayLoss();
    DisplayLoss(const DisplayLoss&) = delete;
    DisplayLoss& operator=(const DisplayLoss&) = delete;
};

} // namespace bridge
