#pragma once

#include "TunedeckMenu/Panel/FirstRun/OnboardingActions.h"
#include "TunedeckMenu/Panel/PanelHost.h"

#include <QMetaMethod>
#include <QStringList>

#include <functional>

namespace tunedeck {

using namespace Qt::StringLiterals;

/// Stands in for the application behind the views and records the actions.
class FakeHost final : public OnboardingActions, public PanelHost {
    Q_OBJECT
public:
    FakeHost();
    PanelActions& actions() override { return panel; }
    QIcon fileIcon(const QString& path) override;
    void showRows(RowRange RowRanges::* list, RowRange range) override { onShowRows(list, range); }

    void windowAppeared() override { ++appeared; }
    void windowClosed() override { --appeared; }
    void advance() override { pressed << u"advance"_s; }
    void back() override { pressed << u"back"_s; }
    void startService() override { pressed << u"startService"_s; }
    void openLog() override { pressed << u"openLog"_s; }
    void repairTools() override { pressed << u"repairTools"_s; }
    void takeBaseline() override { pressed << u"takeBaseline"_s; }
    void choose(const QString& kind) override { pressed << u"choose "_s + kind; }
    void copyLink() override { pressed << u"copyLink"_s; }
    void copyKey() override { pressed << u"copyKey"_s; }
    void openTelegram() override { pressed << u"openTelegram"_s; }
    void newTelegramCode() override { pressed << u"newTelegramCode"_s; }
    void openSetupGuide() override { pressed << u"openSetupGuide"_s; }

    std::function<void(RowRange RowRanges::*, RowRange)> onShowRows = [](RowRange RowRanges::*, RowRange) {};
    PanelActions panel;
    QStringList pressed; ///< actions in order: "restartService", "copySecret a.url", …
    int appeared = 0;    ///< windows on the screen
    QIcon icon;          ///< of every file
    QStringList iconPaths;

private Q_SLOTS:
    void record(const QString& argument = {});
    void record(bool on) { record(on ? u"on"_s : u"off"_s); }
};

} // namespace tunedeck
