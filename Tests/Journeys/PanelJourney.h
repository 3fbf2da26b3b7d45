#pragma once

#include "Tests/Helpers/Views/Screen.h"
#include "Tests/Menu/MenuFixture.h"
#include "TunedeckMenu/Actions/PanelController.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Windows/WindowController.h"

#include <memory>
#include <optional>

namespace tunedeck::test {

/// The panel in its window with the real views, model and actions; the desktop and the service are fakes.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): a fixture, as GoogleTest has them
class PanelJourney : public Screen, protected MenuWorld, private ViewsSource {
protected:
    PanelJourney();
    void TearDown() override;

    /// Shows the window and waits for the first refresh.
    void open();
    /// Waits for one more refresh.
    void poll();
    /// Waits until the control is enabled. "More of Studio": the "More" whose description contains "Studio".
    [[nodiscard]] Element ready(const QString& step) const;
    /// Presses the controls in order. While a question is open, these are its buttons.
    void go(const QStringList& way);
    /// The error or note, as a screen reader finds it. More than one is a failure.
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
    ServiceSetup m_setup{ServiceInstaller(home.path(), {}, 501, services.launchctl, clock)};
    std::unique_ptr<WindowController> m_windows;
};

} // namespace tunedeck::test
