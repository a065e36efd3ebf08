#pragma once
// The hourglass while the program works, taken back when the work ends, also on a failure.

#include <QApplication>

class BusyCursor {
public:
    BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { Reset(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;

    // Ends the hourglass before the scope does, as start-up does before the window loads.
    void Reset()
    {
        if (on_)
            QApplication::restoreOverrideCursor();
        on_ = false;
    }

private:
    bool on_ = true;
};
