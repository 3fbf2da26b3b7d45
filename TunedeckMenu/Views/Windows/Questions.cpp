#include "TunedeckMenu/Views/Windows/Questions.h"

#include "TunedeckMenu/Views/Windows/WindowPresence.h"
#include "TunedeckMenu/Views/Windows/WindowSize.h"
#include "TunedeckMenu/Views/Windows/WindowSizeWatch.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tunedeck {

Questions::Questions(const WindowFactory& factory, std::function<QQuickWindow*()> over)
    : m_factory(factory), m_over(std::move(over)) {}

Questions::~Questions() = default;

void Questions::ask(const Confirmation& question, std::function<void(bool confirmed)> answer) {
    // A repeated press of the same control: assistive technology isn't blocked by the modal dialog.
    if (std::ranges::any_of(m_questions, [&](const Question& asked) { return asked.confirmation == question; })) {
        answer(false);
        return;
    }
    m_questions.push_back({question, std::move(answer)});
    if (m_dialog == nullptr) {
        askNext();
    }
}

void Questions::askNext() {
    if (m_questions.empty()) {
        return;
    }
    const Confirmation& question = m_questions.front().confirmation;
    m_dialog = m_factory.create(u"Frames/ConfirmDialog.qml"_s, {{u"message"_s, question.message},
                                                                {u"informativeText"_s, question.informativeText},
                                                                {u"confirmLabel"_s, question.confirmButton},
                                                                {u"cancelLabel"_s, question.cancelButton},
                                                                {u"warning"_s, question.warning}});
    connect(m_dialog.get(), SIGNAL(answered(bool)), this, SLOT(answered(bool)));
    connect(new WindowSizeWatch(*m_dialog, 0), &WindowSizeWatch::changed, m_dialog.get(), [dialog = m_dialog.get()] {
        setFixedSize(*dialog);
        keepOnScreen(*dialog);
    });
    QQuickWindow* const over = m_over();
    setFixedSize(*m_dialog);
    m_dialog->setTransientParent(over);
    centre(*m_dialog, over);
    bringToFront(*m_dialog);
}

void Questions::answered(bool confirmed) {
    QQuickWindow* const asked = m_dialog.release();
    asked->disconnect(this); // a second press would answer the next question
    QWindow* const over = asked->transientParent();
    asked->hide();
    asked->deleteLater();
    const auto answer = std::move(m_questions.front().answer);
    m_questions.pop_front();
    if (over != nullptr && over->isVisible()) {
        over->requestActivate();
    }
    askNext();
    answer(confirmed);
}

} // namespace tunedeck
