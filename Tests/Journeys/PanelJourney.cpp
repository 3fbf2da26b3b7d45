#include "Tests/Journeys/PanelJourney.h"

namespace tunedeck::test {

PanelJourney::PanelJourney() {
    m_appearance.appearance = appearance;
    services.confirm = [this](const Confirmation& question, std::function<void(bool)> answer) {
        m_windows->confirm(question, std::move(answer));
    };
    m_windows = std::make_unique<WindowController>(WindowController::Parts{.model = m_model,
                                                                           .panel = m_controller,
                                                                           .services = services,
                                                                           .setup = m_setup,
                                                                           .appearance = m_appearance,
                                                                           .source = *this});
}

void PanelJourney::TearDown() {
    m_windows.reset();
    Screen::TearDown();
}

void PanelJourney::open() {
    m_windows->showWindow();
    ASSERT_TRUE(comes([&] {
        return front().isActive() && (state().service.isRunning() || state().service.isNotRunning()) &&
               clock.sleeping() > 0;
    }));
    wait(20);
}

void PanelJourney::poll() {
    const auto before = clock.sleeps().size();
    clock.advance(std::chrono::seconds(3));
    ASSERT_TRUE(comes([&] { return clock.sleeps().size() > before; })) << "the panel doesn't refresh";
    wait(20);
}

Element PanelJourney::ready(const QString& step) const {
    const auto parts = step.split(QStringLiteral(" of "));
    const auto candidates = [&] {
        auto found = controls(parts.first());
        found.removeIf([&](const Element& element) {
            return !element.description.contains(parts.value(1)) || !element.isEnabled();
        });
        return found;
    };
    EXPECT_TRUE(comes([&] { return candidates().size() == 1; })) << qPrintable(step);
    return candidates().value(0);
}

void PanelJourney::go(const QStringList& way) {
    for (const QString& step : way) {
        const Element element = ready(step);
        EXPECT_TRUE(element.access != nullptr && element.press()) << qPrintable(step);
        wait(1);
    }
}

std::optional<QString> PanelJourney::line() const {
    std::optional<QString> found;
    for (const Element& element : elements()) {
        if (element.role == QAccessible::AlertMessage && element.access->parent() != nullptr && !isAsked()) {
            EXPECT_FALSE(found) << qPrintable(*found) << " and " << qPrintable(element.name);
            found = element.name;
        }
    }
    return found;
}

} // namespace tunedeck::test
