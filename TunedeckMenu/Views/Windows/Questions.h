#pragma once

#include "TunedeckMenu/Panel/Confirmation.h"
#include "TunedeckMenu/Views/Windows/WindowFactory.h"

#include <QObject>
#include <QQuickWindow>

#include <deque>
#include <functional>
#include <memory>

namespace tunedeck {

/// The confirmation dialogs: one at a time, modal to the application without blocking the event loop.
class Questions : public QObject {
    Q_OBJECT
public:
    /// `over`: returns the window that a question belongs to, or null.
    Questions(const WindowFactory& factory, std::function<QQuickWindow*()> over);
    ~Questions() override;

    /// `answer` is called once.
    void ask(const Confirmation& question, std::function<void(bool confirmed)> answer);

private:
    struct Question {
        Confirmation confirmation;
        std::function<void(bool)> answer;
    };

    void askNext();
    Q_SLOT void answered(bool confirmed);

    const WindowFactory& m_factory;
    std::function<QQuickWindow*()> m_over;
    std::unique_ptr<QQuickWindow> m_dialog;
    std::deque<Question> m_questions;
};

} // namespace tunedeck
