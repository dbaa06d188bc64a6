#pragma once

/// As long as it lives, what makes the toolkit give up ends the program with status 1 and a line that says
/// what to do, in place of an abort: while the application object is made, that is a display which cannot be
/// reached.
class DisplayCheck {
public:
    DisplayCheck();
    ~DisplayCheck();
    DisplayCheck(const DisplayCheck&) = delete;
    DisplayCheck& operator=(const DisplayCheck&) = delete;
    DisplayCheck(DisplayCheck&&) = delete;
    DisplayCheck& operator=(DisplayCheck&&) = delete;
};
