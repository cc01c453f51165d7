#include "shell/FormAppLoading.h"

#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace zorfa::shell {

TFormAppLoading::TFormAppLoading(QWidget* parent)
    // A title bar that shows the caption, and no border icons: the user can't
    // close or resize the window the program is starting behind.
    : QWidget(parent, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowStaysOnTopHint) {
    setObjectName("FormAppLoading");
    setWindowTitle("Zorfa Editor loading ...");
    setFixedSize(350, 200);

    // The splash picture is an asset that is not supplied; the caption stands in for it.
    auto* layout = new QVBoxLayout(this);
    auto* splash = new QLabel("Zorfa Editor loading ...", this);
    splash->setAlignment(Qt::AlignCenter);
    QFont font = splash->font();
    font.setPointSize(font.pointSize() + 4);
    font.setBold(true);
    splash->setFont(font);
    layout->addWidget(splash, 1);

    progressBar_ = new QProgressBar(this);
    progressBar_->setRange(0, 100);
    progressBar_->setValue(0);
    progressBar_->setTextVisible(false);
    layout->addWidget(progressBar_);

    if (QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect desktop = screen->availableGeometry();
        move(desktop.center() - rect().center());
    }

    timer_ = new QTimer(this);
    timer_->setInterval(10);
    connect(timer_, &QTimer::timeout, this, &TFormAppLoading::TimerTimer);
    timer_->start();
}

void TFormAppLoading::TimerTimer() {
    if (progressBar_->value() == 100) progressBar_->setValue(0);
    progressBar_->setValue(progressBar_->value() + 10);
}

}  // namespace zorfa::shell
