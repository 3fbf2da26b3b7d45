#pragma once

#include "Tests/Helpers/Views/Screen.h"
#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/Actions/PanelController.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Windows/WindowController.h"

#include <memory>
#include <optional>

namespace tunedeck::test {

/// The whole panel in its window: only the desktop and the service are the test's own.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): a fixture, as GoogleTest has them
class PanelJourney : public Screen, protected MenuWorld, private ViewsSource {
protected:
    PanelJourney();
    void TearDown() override;

    /// Shows the window with the service as it is served now.
    void open();
    /// Lets the panel ask the service once more.
    void poll();
    /// Waits for the control and until it can be pressed. "More of Studio": the one whose description has "Studio".
    [[nodiscard]] Seen ready(const QString& step) const;
    /// Presses one control after the other; a question's buttons stand in for the panel's while it is asked.
    void go(const QStringList& way);
    /// The line about the last action, as a screen reader finds it; nothing when there is none. More than one is a
    /// failure.
    [[nodiscard]] std::optional<QString> line() const;
    [[nodiscard]] bool isAsked() const { return front().modality() == Qt::ApplicationModal; }
    [[nodiscard]] bool isBusy() const { return state().libraryBusy || state().linksBusy || state().isRestarting; }
    [[nodiscard]] const PanelState& state() const { return m_model.state(); }
    MenuModel& model() { return m_model; }

private:
    std::unique_ptr<PanelViews> createViews(PanelHost& windows, const Appearance& wanted) override {
        return module().createViews(windows, wanted);
    }

    FakeAppearanceSource m_appearance;
    MenuModel m_model{services};
    PanelController m_controller{m_model, services};
    std::unique_ptr<WindowController> m_windows;
};

} // namespace tunedeck::test
