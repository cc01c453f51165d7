#pragma once
// The loading form shown while the main window is being built. It says
// nothing about real progress: its bar only cycles, driven by a 10 ms timer,
// so the user sees the program is alive during start-up.

#include <QWidget>

class QProgressBar;
class QTimer;

namespace zorfa::shell {

class TFormAppLoading : public QWidget {
    Q_OBJECT
public:
    explicit TFormAppLoading(QWidget* parent = nullptr);

    QProgressBar* progressBar() const { return progressBar_; }
    QTimer* timer() const { return timer_; }

    // One tick of the timer: a bar at 100 first goes back to 0, then 10 is added.
    void TimerTimer();

private:
    QProgressBar* progressBar_;
    QTimer* timer_;
};

}  // namespace zorfa::shell
