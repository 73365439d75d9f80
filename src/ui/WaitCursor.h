// Shows the wait pointer for as long as the object lives, so a lengthy handler
// restores the normal pointer on every way out.
#pragma once

class WaitCursor {
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};
