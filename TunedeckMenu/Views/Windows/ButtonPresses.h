#pragma once

#include <QObject>

#include <memory>

namespace tunedeck {

/// Reports presses of mouse buttons anywhere on the screen, whatever window or program they go to. Only X11 allows
/// that.
class ButtonPresses : public QObject {
    Q_OBJECT
public:
    ButtonPresses();
    ~ButtonPresses() override;

    /// Starts reporting. A no-op where the window system doesn't allow it.
    void start();
    void stop();

Q_SIGNALS:
    void pressed();

private:
    class Observer;
    std::unique_ptr<Observer> m_observer;
};

} // namespace tunedeck
