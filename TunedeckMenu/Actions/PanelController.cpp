#include "TunedeckMenu/Actions/PanelController.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckMenu/Actions/DiagnosticsReport.h"
#include "TunedeckMenu/Actions/Openers.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

PanelController::PanelController(MenuModel& model, const MenuServices& services)
    : m_copier(services, model)
    , m_service(*this, model, services)
    , m_folder(*this, model, services)
    , m_library(*this, model, services)
    , m_links(*this, model, services, m_copier)
    , m_update(*this, model, services) {
    connect(this, &PanelActions::panelAppeared, &model, &MenuModel::panelAppeared);
    connect(this, &PanelActions::panelDisappeared, &model, &MenuModel::panelDisappeared);
    connect(this, &PanelActions::quit, &model, [&services] { services.quit(); });
    connect(this, &PanelActions::toggleRevealSecrets, &model,
            [&model] { model.setRevealSecrets(!model.state().revealSecrets); });
    connect(this, &PanelActions::setOpensAtLogin, &model, [&model, &services](bool on) {
        if (const auto changed = services.loginItem.setEnabled(on); changed) {
            model.clearError();
        } else {
            model.showError(u"Couldn't change Open at Login: "_s + changed.error());
        }
        model.readSettings(); // the actual state, which may differ from the requested one
    });
    connect(this, &PanelActions::openDesktopGuide, &model, [&model, &services] {
        openFile(BundlePaths(services.facts.bundle).desktopGuide(), services.workspace, model);
    });
    connect(this, &PanelActions::copyDiagnostics, &model, [&model, &services] {
        services.pasteboard.setText(diagnosticsReport(model.state(), services.facts, services.clock.now()));
        model.showNote(u"Diagnostics copied, with secrets masked. Paste them into your message to support."_s);
    });
}

} // namespace tunedeck
